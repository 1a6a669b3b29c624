#include "Annotate/Overlay.h"

#include "Annotate/EarlierEdit.h"
#include "FoundationClasses/FcShadowDb.h"
#include "FoundationClasses/IfcClass.h"

#include <utility>

namespace annotate {

using orv::domain::shared::enhancementsforreferencemodel::PsetData;
using orv::fc::core::kernel::FcObjectDefinition;
using orv::object::PropertyValue;

namespace {

/// Gives PsetData the callbacks, and returns that for the objects of the model.
orv::host::Overlay::FindObject connect(const Model& model) {
    auto masters = std::make_shared<orv::fc::Data>();
    auto shadows = std::make_shared<orv::fc::FcShadowDb>();
    orv::host::Overlay::FindObject findMaster = [&model, masters](const orv::Guid& id) {
        auto master = masters->findByGuid(id);
        const ModelObject* const object = master ? nullptr : model.find(id);
        if (object != nullptr) {
            master = masters->entityCreate(std::string(object->ifcClass->name));
            master->guid = id;
        }
        return std::dynamic_pointer_cast<const FcObjectDefinition>(master);
    };
    PsetData::getObjectFromGuidCallbackSet(findMaster);
    PsetData::getPsetShadowDbReadOnlyCallbackSet([shadows] { return shadows; });
    PsetData::getPsetShadowDbReadWriteCallbackSet([shadows] { return std::pair(shadows, orv::ScopeGuard()); });
    return findMaster;
}

void apply(PsetData& overlay, const EarlierEdit& edit) {
    if (edit.form == "list") {
        overlay.setValue(edit.ownerId, edit.propertySet, edit.property,
                         std::vector<PropertyValue>(edit.values.begin(), edit.values.end()));
    } else if (edit.form == "table") {
        std::vector<std::pair<PropertyValue, PropertyValue>> rows;
        for (std::size_t index = 1; index < edit.values.size(); index += 2) {
            rows.emplace_back(edit.values[index - 1], edit.values[index]);
        }
        overlay.setValue(edit.ownerId, edit.propertySet, edit.property, rows);
    } else if (!edit.values.empty()) {
        overlay.setValue(edit.ownerId, edit.propertySet, edit.property, PropertyValue(edit.values.front()));
    }
}

} // namespace

Overlay::Overlay(const Model& model) : edits(connect(model), "") {}

Overlay::Overlay(const Model& model, const Records& records) : Overlay(model) {
    PsetData overlay(false);
    for (const EarlierEdit* const edit : allOf<const EarlierEdit>(records)) {
        apply(overlay, *edit);
    }
    edits.restore(records);
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
