// Any bytes come back as the text and as the name of an element.

#include "Xml/Documents.h"

#include <string_view>

using namespace orv;

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const std::string bytes(data, data + size);
    const auto half = std::string_view(bytes).substr(0, size / 2);
    xml::File file;
    auto root = file.create(bytes, {}, true);
    root->ElementNodeAppend(half).boTextNodeAppend(bytes);
    auto inParts = root->ElementNodeAppend(bytes);
    inParts.boTextNodeAppend(half);
    inParts.boTextNodeAppend(std::string_view(bytes).substr(half.size()));
    inParts.ElementNodeAppend("_").boTextNodeAppend(half);
    for (const auto lineEnding : {xml::LineEnding::None, xml::LineEnding::Lf, xml::LineEnding::CrLf}) {
        std::istringstream stream(fuzz::saved(file, lineEnding));
        xml::File copy;
        const auto copiedRoot = copy.parse(stream, "copy", nullptr);
        fuzz::require(copiedRoot.has_value(), "a saved document is one");
        fuzz::require(copiedRoot->boNodeNameIs(bytes), "the root's name comes back");
        fuzz::require(lineEnding != xml::LineEnding::None || fuzz::contentOf(*copiedRoot) == fuzz::contentOf(*root),
                      "the content comes back");
    }
    return 0;
}
