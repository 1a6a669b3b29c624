#pragma once

#include <cstdint>
#include <string_view>

namespace orv::assert {

/// One report of a broken condition. The texts are views: a receiver that keeps a report copies them.
struct AssertInfo {
    std::uint32_t number = 0;    ///< A number for the report; 0 at every site of these libraries.
    std::string_view message;    ///< The sentence that tells what is wrong.
    std::string_view function;   ///< The reporting function with its namespaces.
    std::string_view sourcePath; ///< The reporting source, below the project's root and without an ending.
    std::uint32_t line = 0;      ///< The number by which the site is known; it stays when the source moves.
};

} // namespace orv::assert
