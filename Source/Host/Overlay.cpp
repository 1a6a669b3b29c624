#include "Host/Overlay.h"

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "Host/EditCheck.h"
#include "Host/EditStore.h"
#include "Host/LatestEdits.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "IfcVersionMapping/SetApplicability.h"

#include <algorithm>

namespace orv::host {

using domain::shared::enhancementsforreferencemodel::Enhancements;
using domain::shared::enhancementsforreferencemodel::Factory;
using domain::shared::enhancementsforreferencemodel::PsetData;
using fc::core::kernel::FcObjectDefinition;
using fc::core::kernel::FcPropertySet;
using object::PropertyValue;
using Form = PropertyEdit::Form;
using Result = Outcome::Result;
using Object = std::shared_ptr<const FcObjectDefinition>;

namespace {

Outcome failed(Result result) {
    Outcome outcome;
    outcome.result = result;
    return outcome;
}

/// An object, and whether that is the one in the overlay.
struct Found {
    Object object; ///< Null if there is none.
    bool isShadow = false;
};

Found findObject(PsetData& overlay, const Guid& id, const Overlay::FindObject& findInModel) {
    const auto database = overlay.getDb();
    if (!database) {
        return {};
    }
    if (Object shadow = database->findShadowObject(id)) {
        return {std::move(shadow), true};
    }
    Object original = findInModel ? findInModel(id) : nullptr;
    const bool isObject = original && fc::IfcClass::isObjectDefinition(original->kindNumber());
    return {isObject ? std::move(original) : nullptr};
}

std::shared_ptr<fc::FcProperty> findProperty(fc::FcShadowDb& database, const PropertyEdit& edit, const Guid& id) {
    const auto shadow = database.findShadowObject(id);
    const auto set = shadow ? shadow->getPropertySetDefinitionNonConst<FcPropertySet>(edit.set) : nullptr;
    auto property = set ? set->findProperty(edit.property) : nullptr;
    if (property) {
        set->adopt(*property); // a host may have put it there
    }
    return property;
}

std::string textOfBound(const PropertyValue& bound) {
    fc::FcValue text(fc::FcValueType::find("IfcLabel"));
    text.updateValueFromPropertyValue(bound);
    return text.getAsString(false).value_or("");
}

std::string joined(const std::vector<PropertyValue>& texts) {
    std::string joined;
    for (const PropertyValue& text : texts) {
        joined.append(joined.empty() ? "" : ";").append(text.get<std::string>());
    }
    return joined;
}

/// Takes the property away if it is there. Lists and tables would stay as they are otherwise.
void remove(PsetData& overlay, const Guid& id, const PropertyEdit& edit) {
    if (const auto present = findProperty(*overlay.getDb(), edit, id)) {
        present->deleteProperty(overlay.getDb()->data(), false);
    }
}

/// A bound that isn't given would be an empty text where the type holds texts.
void clearMissingBounds(fc::FcShadowDb& database, const Guid& id, const PropertyEdit& edit) {
    const auto property = std::dynamic_pointer_cast<fc::FcPropertyBoundedValue>(findProperty(database, edit, id));
    if (property == nullptr) {
        return;
    }
    fc::FcValue* const bounds[] = {&property->lowerBoundValue, &property->upperBoundValue, &property->setPointValue};
    for (std::size_t number = 0; number < std::size(bounds); ++number) {
        if (edit.values[number].isEmpty()) {
            bounds[number]->updateValueFromPropertyValue(edit.values[number]); // which leaves it without content
        }
    }
}

/// Makes the property, which isn't there, with the values.
void apply(PsetData& overlay, const Object& object, const PropertyEdit& edit) {
    switch (edit.form) {
    case Form::Single:
        return overlay.setValue(object, edit.set, edit.property, edit.values.front());
    case Form::Enumerated:
        return overlay.setValue(object, edit.set, edit.property, joined(edit.values));
    case Form::Bounded:
        overlay.setValue(object, edit.set, edit.property,
                         textOfBound(edit.values[1]) + ';' + textOfBound(edit.values[0]) + ';' +
                             textOfBound(edit.values[2]));
        return clearMissingBounds(*overlay.getDb(), object->guid, edit);
    case Form::List:
        return overlay.setValue(object, edit.set, edit.property, edit.values);
    case Form::Table: {
        std::vector<std::pair<PropertyValue, PropertyValue>> rows;
        for (std::size_t number = 1; number < edit.values.size(); number += 2) {
            rows.emplace_back(edit.values[number - 1], edit.values[number]);
        }
        return overlay.setValue(object, edit.set, edit.property, rows);
    }
    case Form::Unset:
        return;
    }
}

bool isSetFor(const std::string& pset, const FcObjectDefinition& object) {
    const auto classes = ifc::applicableClasses(pset);
    const auto* const ofObject = fc::IfcClass::find(object.className());
    return classes.empty() || std::any_of(classes.begin(), classes.end(), [ofObject](const auto& applicable) {
               const auto* const row = fc::IfcClass::find(applicable.name);
               return row != nullptr && row->includes(*ofObject);
           });
}

PropertyEdit editOfForm(Form form, const std::string& pset, const std::string& property, const std::string& unit,
                        std::vector<PropertyValue> values) {
    PropertyEdit edit;
    edit.form = form;
    edit.set = pset;
    edit.property = property;
    edit.unit = unit;
    edit.values = std::move(values);
    return edit;
}

/// The outcome for an edit that was stored before. Looks for no names that are near: that would take long for many.
Outcome checkAgain(PropertyEdit& edit) {
    if (edit.form == Form::Unset) {
        return {};
    }
    const auto* const definition = ifc::findSchemaDefForProperty(edit.set, edit.property);
    return definition == nullptr ? failed(Result::NoSuchProperty) : check(*definition, edit);
}

} // namespace

Overlay::Overlay(FindObject findInModelOfHost, std::string authorOfEdits)
    : findInModel(std::move(findInModelOfHost)), author(std::move(authorOfEdits)) {
    Factory::registerClass(std::make_unique<PropertyEdits>());
}

Outcome Overlay::set(const Guid& id, const std::string& pset, const std::string& property, const PropertyValue& value,
                     const std::string& unit) {
    return set(id, editOfForm(Form::Single, pset, property, unit, {value}));
}

Outcome Overlay::set(const Guid& id, const std::string& pset, const std::string& property, const Bounds& bounds,
                     const std::string& unit) {
    return set(id, editOfForm(Form::Bounded, pset, property, unit, {bounds.lower, bounds.upper, bounds.setPoint}));
}

Outcome Overlay::set(const Guid& id, const std::string& pset, const std::string& property,
                     const std::vector<PropertyValue>& values, const std::string& unit) {
    return set(id, editOfForm(Form::List, pset, property, unit, values));
}

Outcome Overlay::set(const Guid& id, const std::string& pset, const std::string& property,
                     const std::vector<std::pair<PropertyValue, PropertyValue>>& rows, const std::string& unit) {
    std::vector<PropertyValue> values;
    for (const auto& [defining, defined] : rows) {
        values.push_back(defining);
        values.push_back(defined);
    }
    return set(id, editOfForm(Form::Table, pset, property, unit, std::move(values)));
}

Outcome Overlay::unset(const Guid& id, const std::string& pset, const std::string& property) {
    const PropertyEdit edit = editOfForm(Form::Unset, pset, property, {}, {});
    bool isInModel = false;
    bool isSet = isEditStored(id, pset, property);
    {
        PsetData overlay(false); // which ends before setAll asks the host for another
        isInModel = findObject(overlay, id, findInModel).object != nullptr;
        isSet = isSet || (isInModel && findProperty(*overlay.getDb(), edit, id) != nullptr);
    }
    if (isSet) {
        return setAll({{id, edit}}).front();
    }
    const bool isKnown = ifc::findSchemaDefForProperty(pset, property) != nullptr;
    return !isKnown ? unknown(edit) : isInModel ? Outcome() : failed(Result::NoSuchObject);
}

Outcome Overlay::set(const Guid& id, PropertyEdit edit) {
    return setAll({{id, std::move(edit)}}).front();
}

Outcome Overlay::check(const Guid& id, PropertyEdit& edit) const {
    PsetData overlay(true);
    return check(overlay, id, edit);
}

Outcome Overlay::check(PsetData& overlay, const Guid& id, PropertyEdit& edit) const {
    if (edit.form == Form::Unset) {
        edit.values.clear();
        return {};
    }
    const auto* const definition = ifc::findSchemaDefForProperty(edit.set, edit.property);
    Outcome outcome = definition == nullptr ? unknown(edit) : host::check(*definition, edit);
    if (!outcome) {
        return outcome;
    }
    const Object object = findObject(overlay, id, findInModel).object;
    if (!object) {
        return failed(Result::NoSuchObject);
    }
    outcome.isOfOtherClass = !isSetFor(edit.set, *object);
    return outcome;
}

std::vector<Outcome> Overlay::setAll(std::vector<ObjectEdit> edits) {
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    std::vector<Outcome> outcomes;
    {
        PsetData overlay(true);
        for (auto& [id, edit] : edits) {
            outcomes.push_back(check(overlay, id, edit));
            edit.author = edit.author.empty() ? author : edit.author;
            edit.time = edit.time == decltype(edit.time){} ? now : edit.time;
        }
    }
    if (!std::all_of(outcomes.begin(), outcomes.end(), [](const Outcome& outcome) { return bool(outcome); })) {
        return outcomes;
    }
    if (!storeEdits(edits)) {
        return {edits.size(), failed(Result::StoreRefused)};
    }
    PsetData overlay(false);
    for (const auto& [id, edit] : edits) {
        if (const Object object = findObject(overlay, id, findInModel).object) {
            remove(overlay, id, edit);
            apply(overlay, object, edit);
        }
    }
    return outcomes;
}

std::vector<Overlay::Unrestored> Overlay::restore() {
    return restore(Enhancements::getOrCreateEnhancementsDb()->getRecords());
}

std::vector<Overlay::Unrestored> Overlay::restore(const std::vector<std::unique_ptr<EnhancementBase>>& records) {
    std::vector<Unrestored> unrestored;
    PsetData overlay(false);
    LatestEdits latest;
    StoredEdits(records).forEachObject([&](const Guid& id, const std::vector<const PropertyEdits*>& ofObject) {
        latest.clear();
        for (const PropertyEdits* const record : ofObject) {
            for (const std::string& line : record->lines) {
                if (!latest.take(line)) {
                    unrestored.push_back({id, line, failed(Result::NotUnderstood)});
                }
            }
        }
        const auto [object, isShadow] = findObject(overlay, id, findInModel);
        for (auto& [edit, line] : latest.get()) {
            const Outcome outcome = object ? checkAgain(edit) : failed(Result::NoSuchObject);
            if (!outcome) {
                if (edit.form != Form::Unset) {
                    unrestored.push_back({id, *line, outcome});
                }
                continue;
            }
            if (isShadow) { // otherwise there is nothing yet, and no property comes twice
                remove(overlay, id, edit);
            }
            apply(overlay, object, edit);
        }
    });
    return unrestored;
}

} // namespace orv::host
