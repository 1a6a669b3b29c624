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
    fuzz::require(root->boNodeNameIs(bytes), "the root has the name that it was given");
    fuzz::requireComesBack(file, *root);
    return 0;
}
