#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "FoundationClasses/FcValue.h"

#include <string>
#include <string_view>

namespace orv::tests {

/// A text that tells alternative and value apart, as in "4:2.5".
inline std::string shown(const object::PropertyValue& value) {
    fc::FcValue text(fc::FcValueType::find("IfcLabel"));
    text.updateValueFromPropertyValue(value);
    return std::to_string(value.getIndex()) + ':' + text.getAsString(false).value_or("");
}

/// What a value of the type is shown as once it was given the other one.
inline std::string takenAs(std::string_view type, const object::PropertyValue& given) {
    fc::FcValue value(fc::FcValueType::find(type));
    value.updateValueFromPropertyValue(given);
    return shown(value.getAsPropertyValue());
}

/// What all of a property's readers give: the value, "|value" for each of a list, "|defining=defined" for each row.
inline std::string readingOf(const Guid& id, const std::string& set, const std::string& property) {
    domain::shared::enhancementsforreferencemodel::PsetData overlay;
    std::string reading = shown(overlay.getValue(id, set, property));
    for (const auto& value : overlay.getListValues(id, set, property)) {
        reading += '|' + shown(value);
    }
    for (const auto& [defining, defined] : overlay.getTableValues(id, set, property)) {
        reading += '|' + shown(defining) + '=' + shown(defined);
    }
    return reading;
}

} // namespace orv::tests
