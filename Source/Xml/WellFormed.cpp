#include "Xml/WellFormed.h"

#include <expat.h>

#include <memory>
#include <new>

namespace orv::xml {

bool isWellFormed(std::initializer_list<std::string_view> document) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate("UTF-8"),
                                                                              &XML_ParserFree);
    if (!parser) {
        throw std::bad_alloc();
    }
    constexpr std::size_t blockSize = std::size_t{1} << 29U; // Expat takes lengths as int
    for (std::string_view piece : document) {
        while (!piece.empty()) {
            const std::string_view block = piece.substr(0, blockSize);
            if (XML_Parse(parser.get(), block.data(), static_cast<int>(block.size()), 0) != XML_STATUS_OK) {
                return false;
            }
            piece.remove_prefix(block.size());
        }
    }
    return XML_Parse(parser.get(), nullptr, 0, 1) == XML_STATUS_OK;
}

} // namespace orv::xml
