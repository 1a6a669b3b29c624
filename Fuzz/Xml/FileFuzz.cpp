// Whatever is taken for a document can be saved; what was saved is a document of the same content, and saved again the
// same bytes.

#include "Xml/Documents.h"

using namespace orv;

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    std::istringstream stream(std::string(data, data + size));
    xml::File file;
    if (const auto root = file.parse(stream, "input", nullptr)) {
        fuzz::requireComesBack(file, *root);
    }
    return 0;
}
