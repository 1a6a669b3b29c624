#include "Annotate/ValueText.h"

#include "FoundationClasses/FcValue.h"

namespace annotate {

std::string valueText(const orv::object::PropertyValue& value) {
    orv::fc::FcValue text(orv::fc::FcValueType::find("IfcLabel"));
    text.updateValueFromPropertyValue(value);
    return text.getAsString(false).value_or("");
}

} // namespace annotate
