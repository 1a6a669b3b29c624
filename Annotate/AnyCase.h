#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace annotate {

/// A text in UTF-8 to compare others with in any case of any script: "STRASSE" equals "Straße", and a letter equals
/// the same one spelt as a letter with marks behind it. Accents and the like count. Bytes that aren't UTF-8 are like
/// nothing else.
class AnyCase {
public:
    explicit AnyCase(std::string_view comparedText);

    const std::string& getText() const { return text; }

    bool equals(std::string_view other) const;

    /// Whether it is within the other text, as the empty one is in any.
    bool isIn(std::string_view other) const;

private:
    std::string text;
    std::optional<std::string> folded; ///< None if the text isn't UTF-8.
};

} // namespace annotate
