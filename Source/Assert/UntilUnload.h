#pragma once

namespace orv {

/// The process's one object of that type in a library. It is made on first use and destroyed when the library is
/// unloaded. What calls afterwards, as a destructor of a host's own may, or of what the object holds, finds none.
template <typename Object>
class UntilUnload {
public:
    UntilUnload(const UntilUnload&) = delete;
    UntilUnload& operator=(const UntilUnload&) = delete;

    /// Null once the library is being unloaded.
    static Object* get() {
        static UntilUnload present;
        return isReleased ? nullptr : &present.object;
    }

private:
    UntilUnload() = default;
    ~UntilUnload() { isReleased = true; }

    static constinit inline bool isReleased = false; // outlives the object

    Object object;
};

} // namespace orv
