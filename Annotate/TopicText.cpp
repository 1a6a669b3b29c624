#include "Annotate/TopicText.h"

#include "Annotate/TopicEscapes.h"
#include "Host/FieldText.h"
#include "Id/Guid.h"

#include <algorithm>
#include <string_view>

namespace annotate {

namespace {

constexpr std::string_view ellipsis = "…";
constexpr std::string_view blankTitle = "(blank)";
constexpr std::string_view lineStart = "\n\nObject: ";
constexpr std::string_view beforeGlobalId = ", GlobalId ";

/// The bytes of the text up to the size, without a character that it would cut.
std::string_view cut(std::string_view text, std::size_t size) {
    while (size < text.size() && size > 0 && (static_cast<unsigned char>(text[size]) & 0xc0U) == 0x80U) {
        --size;
    }
    return text.substr(0, size);
}

} // namespace

TitledText titledText(const std::string& text) {
    constexpr std::size_t longest = 120;
    const std::string_view content = orv::host::trimmed(text);
    const std::string_view line = orv::host::trimmed(content.substr(0, content.find('\n')));
    if (content.empty()) {
        return {std::string(blankTitle), text}; // as no title may be
    }
    if (line.size() <= longest) {
        return {std::string(line), line == text ? "" : text};
    }
    const std::string_view start = cut(line, longest);
    const std::size_t blank = start.rfind(' ');
    return {std::string(start.substr(0, blank)).append(ellipsis), text};
}

std::string textOf(const TitledText& titled) {
    const std::string_view title = titled.title;
    const std::string_view start = title.ends_with(ellipsis) ? title.substr(0, title.size() - ellipsis.size()) : title;
    if (titled.description.empty()) {
        return titled.title;
    }
    if (title == blankTitle && isBlank(titled.description)) {
        return titled.description;
    }
    return title.empty() || orv::host::trimmed(titled.description).starts_with(orv::host::trimmed(start))
               ? titled.description
               : titled.title + "\n\n" + titled.description;
}

std::string objectLine(const std::string& objectName, const std::string& globalId) {
    return std::string(lineStart).append(objectName).append(beforeGlobalId).append(globalId);
}

std::string takeObjectLine(std::string& description) {
    const std::size_t begin = description.rfind(lineStart);
    const std::size_t id = begin == std::string::npos ? begin : description.rfind(beforeGlobalId);
    if (id == std::string::npos || id < begin) {
        return "";
    }
    std::string globalId(orv::host::trimmed(description.substr(id + beforeGlobalId.size())));
    if (orv::Guid ignored; !ignored.boSet(globalId)) {
        return "";
    }
    description.resize(begin);
    return globalId;
}

} // namespace annotate
