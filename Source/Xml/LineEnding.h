#pragma once

namespace orv::xml {

/// What stands between the elements of a saved document, except around text. Indentation ends at 32 levels.
enum class LineEnding {
    None = 0, ///< Nothing: the whole document is one line.
    CrLf = 1, ///< Carriage return and line feed, and an indentation by two spaces a level.
    Lf = 2    ///< Line feed, and the same indentation.
};

} // namespace orv::xml
