#include "Object/PropertyValue.h"

#include "Assert/Assert.h"

namespace orv::object {

// Hosts are compiled against these widths.
static_assert(sizeof(int) == 4 && sizeof(Logical) == 4 && sizeof(std::optional<int>) == 8 &&
              sizeof(std::optional<Logical>) == 8 && sizeof(std::optional<bool>) == 2 &&
              sizeof(std::optional<double>) == 16);

const std::type_info& PropertyValue::getType() const {
    return std::visit([](const auto& held) -> const std::type_info& { return typeid(held); }, content);
}

void PropertyValue::reportOtherType() {
    if (assert::Assert::isEnabled()) {
        assert::Assert::addAssert({0, "Property value doesn't hold the given type.", "orv::object::PropertyValue::get",
                                   "Source/Object/PropertyValue", 93});
    }
}

} // namespace orv::object
