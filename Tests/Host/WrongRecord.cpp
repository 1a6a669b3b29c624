// Not built: compiled with one of the macros, to see what the compiler says.

#include "Host/Record.h"

enum class Nameless { One };

struct Wrong : orv::host::Record<Wrong> {
    static constexpr auto entityName = "Wrong";
#if defined(FLOAT)
    float value = 0;
#elif defined(NESTED)
    std::vector<std::vector<std::string>> value;
#elif defined(NAMELESS)
    Nameless value = Nameless::One;
#else
    int value = 0;
#endif
#ifdef TWICE
    static constexpr auto fields =
        std::tuple(orv::host::field("Value", &Wrong::value), orv::host::field("Value", &Wrong::value));
#else
    static constexpr auto fields = std::tuple(orv::host::field("Value", &Wrong::value));
#endif
};

int main() {
    return static_cast<int>(Wrong().getAttributes().size());
}
