#include "Annotate/ValueText.h"

#include "FoundationClasses/FcValue.h"

namespace annotate {

std::string valueText(const orv::object::PropertyValue& value) {
    orv::fc::FcValue text(orv::fc::FcValueType::find("IfcLabel"));
    text.updateValueFromPropertyValue(value);
    return text.getAsString(false).value_or("");
}

bool isNumber(const orv::object::PropertyValue& value) {
    return value.getIf<double>() != nullptr || value.getIf<int>() != nullptr;
}

std::string withUnit(const std::string& text, const std::string& unit) {
    return text.empty() || unit.empty() ? text : text + ' ' + unit;
}

} // namespace annotate
