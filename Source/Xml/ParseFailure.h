#pragma once

#include <cstdint>

namespace orv::xml {

/// Why a document was refused, and where.
struct ParseFailure {
    const char* reason = "";  ///< A phrase without a full stop. Lives as long as the process.
    std::uint64_t line = 0;   ///< From 1.
    std::uint64_t column = 0; ///< From 1, in bytes.
};

} // namespace orv::xml
