#pragma once

#include "Xml/Escape.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace orv::xml {

/// The value of the first child node of an element, which is told of its nodes one after the other.
class FirstNode {
public:
    /// A piece of a text, with its escapes. The next piece belongs to the same text unless another node comes between.
    void appendText(std::string_view piece) {
        if (!value) {
            value.emplace();
            isInText = true;
        }
        if (isInText) {
            *value += piece;
        }
    }

    /// A node that isn't a text; of an element, the value is empty.
    void appendOther(std::string_view otherValue) {
        endText();
        if (!value) {
            value = otherValue;
        }
    }

    /// The value, nothing if there was no node. Another element can begin.
    std::optional<std::string> end() {
        endText();
        return std::exchange(value, std::nullopt);
    }

private:
    void endText() {
        if (std::exchange(isInText, false)) {
            unescape(*value, 0);
        }
    }

    std::optional<std::string> value;
    bool isInText = false; // the first node is a text that may go on
};

} // namespace orv::xml
