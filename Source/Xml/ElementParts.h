#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::xml {

/// The markup of one element, taken apart. The views are parts of that markup, without white space at their ends: the
/// three of the children and what is behind them are all of the element's content.
struct ElementParts {
    struct Child {
        std::string_view ahead;  ///< What stands between the child element before, or the start tag, and this one.
        std::string_view markup; ///< The child element as it stands.
        std::string name;

        /// The value of the child's first child node of any kind, which is empty for an element; nothing if there is no
        /// child node.
        std::optional<std::string> text;

        /// Whether name and text tell all: there are no attributes, and no child nodes but the one text.
        bool isPlain = true;
    };

    std::string name;
    std::string attributes; ///< Each preceded by a space, as in Surroundings.
    std::vector<Child> children;
    std::string_view behind; ///< What stands between the last child element, or the start tag, and the end tag.
};

} // namespace orv::xml
