#pragma once

#include <string>

namespace orv::xml {

/// What stands around the content of a document's root, as markup in UTF-8.
struct Surroundings {
    std::string before;         ///< Comments and processing instructions ahead of the root.
    std::string rootAttributes; ///< The root's attributes, each preceded by a space.
    std::string after;          ///< Comments and processing instructions behind the root.
};

} // namespace orv::xml
