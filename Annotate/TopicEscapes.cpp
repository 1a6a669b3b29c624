#include "Annotate/TopicEscapes.h"

#include "Host/FieldText.h"
#include "Xml/Escape.h"
#include "Xml/MarkupWriter.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace annotate {

namespace {

/// What is no character of XML, or white space, or an underscore that would begin an escape.
bool isWrittenAsEscape(std::uint32_t unit) {
    return unit <= ' ' || unit == '_' || (unit >= 0xdc80 && unit <= 0xdcff) || unit == 0xfffe || unit == 0xffff;
}

std::string escapedBlanks(std::string_view text) {
    std::string escaped;
    for (const char blank : text) {
        std::array<char, orv::xml::escapeLength> escape{};
        orv::xml::putEscape(escape.data(), static_cast<unsigned char>(blank));
        escaped.append(escape.data(), escape.size());
    }
    return escaped;
}

} // namespace

std::string escapedElement(std::string_view name, std::string_view text) {
    if (isBlank(text)) {
        const std::string tag = std::string(name) + '>';
        return '<' + tag + escapedBlanks(text) + "</" + tag;
    }
    orv::xml::MarkupWriter writer(orv::xml::LineEnding::None);
    writer.appendElement(name, text);
    return std::string(writer.getText());
}

std::string withoutEscapes(std::string text) {
    for (std::size_t place = text.find("_x"); place != std::string::npos; place = text.find("_x", place)) {
        const auto unit = orv::xml::escapedUnit(text, place);
        const bool isEscape = unit && text.substr(place + orv::xml::escapeLength - 1, 1) == "_";
        if (isEscape && !isWrittenAsEscape(*unit)) {
            return text;
        }
        place += isEscape ? orv::xml::escapeLength : 1;
    }
    orv::xml::unescape(text, 0);
    return text;
}

bool isBlank(std::string_view text) {
    return orv::host::trimmed(text).empty();
}

} // namespace annotate
