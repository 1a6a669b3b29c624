#include "Annotate/PropertyEdit.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace annotate {

namespace {

/// By the number of the form.
constexpr std::array<std::string_view, 3> formNames{"single", "list", "table"};

} // namespace

std::string PropertyEdit::getEntityName() const {
    return "PropertyEdit";
}

std::vector<std::pair<std::string, orv::object::PropertyValue>> PropertyEdit::getAttributes() const {
    std::vector<std::pair<std::string, orv::object::PropertyValue>> attributes = {
        {"PropertySet", propertySet},
        {"Property", property},
        {"Form", std::string(formNames[static_cast<std::size_t>(form)])}};
    for (const std::string& value : values) {
        attributes.emplace_back("Value", value);
    }
    return attributes;
}

void PropertyEdit::setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) {
    EnhancementBase::setAttributes(attributes);
    for (const auto& [name, text] : attributes) {
        if (name == "PropertySet") {
            propertySet = text;
        } else if (name == "Property") {
            property = text;
        } else if (name == "Form") {
            const auto known = std::find(formNames.begin(), formNames.end(), text);
            form = known == formNames.end() ? Form::Single : static_cast<Form>(std::distance(formNames.begin(), known));
        } else if (name == "Value") {
            values.push_back(text);
        }
    }
}

std::unique_ptr<orv::domain::shared::enhancementsforreferencemodel::EnhancementBase>
PropertyEdit::createInstance() const {
    return std::make_unique<PropertyEdit>();
}

} // namespace annotate
