// Whatever is taken for a document can be saved; what was saved is a document of the same content, and saved again the
// same bytes.

#include "Xml/Documents.h"

using namespace orv;

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    std::istringstream stream(std::string(data, data + size));
    xml::File file;
    const auto root = file.parse(stream, "input", nullptr);
    if (!root) {
        return 0;
    }
    for (const auto lineEnding : {xml::LineEnding::None, xml::LineEnding::Lf}) {
        const std::string text = fuzz::saved(file, lineEnding);
        std::istringstream savedStream(text);
        xml::File copy;
        const auto copiedRoot = copy.parse(savedStream, "copy", nullptr);
        fuzz::require(copiedRoot.has_value(), "a saved document is one");
        fuzz::require(copiedRoot->getNodeName() == root->getNodeName(), "the root's name comes back");
        fuzz::require(lineEnding != xml::LineEnding::None || fuzz::contentOf(*copiedRoot) == fuzz::contentOf(*root),
                      "the content comes back");
        fuzz::require(fuzz::saved(copy, lineEnding) == text, "a document saved twice gives the same bytes");
    }
    return 0;
}
