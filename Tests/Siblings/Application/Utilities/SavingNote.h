#pragma once

namespace orv::utilities {

/// Of a document in memory there is none.
struct SavingNote {
    static bool isOpen() { return false; }
    void leave() {}
};

} // namespace orv::utilities
