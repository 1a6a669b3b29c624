#include "Annotate/Overlay.h"

#include "FoundationClasses/IfcClass.h"

#include <utility>

namespace annotate {

using orv::domain::shared::enhancementsforreferencemodel::PsetData;
using orv::fc::core::kernel::FcObjectDefinition;
using orv::object::PropertyValue;

Overlay::Overlay(const Model& model, const std::vector<const PropertyEdit*>& edits) {
    for (const ModelObject& object : model.getObjects()) {
        orv::Guid id;
        if (id.boSet(object.globalId) && model.find(id) == &object) {
            masters->entityCreate(std::string(object.ifcClass->name))->guid = id;
        }
    }
    PsetData::getObjectFromGuidCallbackSet([data = masters](const orv::Guid& id) {
        return std::dynamic_pointer_cast<const FcObjectDefinition>(data->findByGuid(id));
    });
    PsetData::getPsetShadowDbReadOnlyCallbackSet([database = shadows] { return database; });
    PsetData::getPsetShadowDbReadWriteCallbackSet(
        [database = shadows] { return std::pair(database, orv::ScopeGuard()); });
    for (const PropertyEdit* edit : edits) {
        apply(*edit);
    }
}

void Overlay::apply(const PropertyEdit& edit) {
    PsetData overlay(false);
    switch (edit.form) {
    case PropertyEdit::Form::Single:
        if (!edit.values.empty()) {
            overlay.setValue(edit.ownerId, edit.propertySet, edit.property, PropertyValue(edit.values.front()));
        }
        break;
    case PropertyEdit::Form::List:
        overlay.setValue(edit.ownerId, edit.propertySet, edit.property,
                         std::vector<PropertyValue>(edit.values.begin(), edit.values.end()));
        break;
    case PropertyEdit::Form::Table: {
        std::vector<std::pair<PropertyValue, PropertyValue>> rows;
        for (std::size_t index = 1; index < edit.values.size(); index += 2) {
            rows.emplace_back(edit.values[index - 1], edit.values[index]);
        }
        overlay.setValue(edit.ownerId, edit.propertySet, edit.property, rows);
        break;
    }
    }
}

std::vector<PropertyValue> Overlay::read(const orv::Guid& object, const std::string& propertySet,
                                         const std::string& property) {
    PsetData overlay;
    const PropertyValue value = overlay.getValue(object, propertySet, property);
    if (!value.isEmpty()) {
        return {value};
    }
    std::vector<PropertyValue> values = overlay.getListValues(object, propertySet, property);
    for (const auto& [defining, defined] : overlay.getTableValues(object, propertySet, property)) {
        values.insert(values.end(), {defining, defined});
    }
    return values;
}

} // namespace annotate
