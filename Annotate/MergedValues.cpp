#include "Annotate/MergedValues.h"

#include "Annotate/Arguments.h"
#include "Annotate/EditText.h"
#include "Annotate/UnitEntry.h"
#include "Annotate/ValueText.h"
#include "Host/FieldText.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace annotate {

using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;
using Form = orv::host::PropertyEdit::Form;

namespace {

bool isSet(const EditIndex::Entry& entry) {
    return entry.edit.form != Form::Unset;
}

std::string unitInModel(const MergedProperty& property) {
    return property.model == nullptr ? "" : unitText(*property.model);
}

/// The unit in which users give the values of a property without naming one: the project's. Where the definition isn't
/// known, that of the model's value. Empty if there is none.
std::string projectUnit(const MergedProperty& property, const ModelUnits& units) {
    const auto* const definition = orv::ifc::findSchemaDefForProperty(property.set, property.name);
    return definition == nullptr ? unitInModel(property) : unitOfValues(*definition, units);
}

/// The unit that the model has for the values of a property, its own or the project's; empty if it has none.
std::string modelUnit(const MergedProperty& property, const ModelUnits& units) {
    const std::string own = unitInModel(property);
    return own.empty() ? projectUnit(property, units) : own;
}

/// A number of the model is the same however the edit spells it; an identifier like "007" isn't "7".
bool isSameValue(const PropertyValue& edited, const PropertyValue& models) {
    const std::string text = valueText(edited);
    const std::string modelText = valueText(models);
    double number = 0;
    double modelNumber = 0;
    return text == modelText || (isNumber(models) && orv::host::take(text, number) &&
                                 orv::host::take(modelText, modelNumber) && number == modelNumber);
}

/// Without the empty values at the end, which say nothing.
std::vector<PropertyValue> withoutEmptyEnd(std::vector<PropertyValue> values) {
    while (!values.empty() && valueText(values.back()).empty()) {
        values.pop_back();
    }
    return values;
}

std::vector<PropertyValue> inProjectUnits(const ModelProperty& property, const ModelUnits& units) {
    std::vector<PropertyValue> values = property.values;
    for (std::size_t place = 0; place < values.size(); ++place) {
        const bool isDefined = property.kind == PropertyKind::Table && place % 2 == 1;
        const ModelUnit& own = isDefined ? property.definedUnit : property.unit;
        const ModelUnit* const projects = units.ofType(isDefined ? property.definedValueType : property.valueType);
        double number = 0;
        if (projects != nullptr && projects->symbol != own.symbol && projects->isConvertible && own.isConvertible &&
            orv::host::take(valueText(values[place]), number)) {
            values[place] = converted(number, own, *projects);
        }
    }
    return values;
}

/// Nothing if the unit in which the edit was made can't be converted into that of the project.
std::optional<std::vector<PropertyValue>> inProjectUnits(const orv::host::PropertyEdit& edit, const ModelUnits& units) {
    std::vector<PropertyValue> values = valuesInOrder(edit);
    const auto* const definition = orv::ifc::findSchemaDefForProperty(edit.set, edit.property);
    if (edit.unit.empty() || definition == nullptr || edit.unit == unitOfValues(*definition, units)) {
        return values;
    }
    try {
        takeUnits(*definition, units, edit.unit, values);
        return values;
    } catch (const RequestError&) {
        return std::nullopt;
    }
}

bool isSame(const MergedProperty& property, const ModelUnits& units) {
    const auto edits = inProjectUnits(property.edit->edit, units);
    if (!edits) {
        return false;
    }
    const std::vector<PropertyValue> edited = withoutEmptyEnd(*edits);
    const std::vector<PropertyValue> models = withoutEmptyEnd(inProjectUnits(*property.model, units));
    return std::equal(edited.begin(), edited.end(), models.begin(), models.end(), isSameValue) ||
           (editText(property.edit->edit) == valuesText(*property.model) && unitBesideModel(property, units).empty());
}

} // namespace

std::vector<MergedProperty> merged(const std::vector<ModelSet>& sets,
                                   const std::vector<const EditIndex::Entry*>& edits) {
    std::vector<MergedProperty> properties;
    std::vector<const EditIndex::Entry*> rest = edits;
    std::erase_if(rest, [](const EditIndex::Entry* entry) { return !isSet(*entry); });
    const auto takeEdit = [&](MergedProperty& property) {
        const auto found = std::find_if(rest.begin(), rest.end(), [&](const EditIndex::Entry* entry) {
            return entry->edit.set == property.set && entry->edit.property == property.name;
        });
        if (found != rest.end()) {
            property.edit = *found;
            rest.erase(found);
        }
    };
    const auto takeNew = [&](const std::string& set) {
        for (const EditIndex::Entry* const entry : rest) {
            if (entry->edit.set == set) {
                properties.push_back({set, entry->edit.property, nullptr, entry});
            }
        }
        std::erase_if(rest, [&](const EditIndex::Entry* entry) { return entry->edit.set == set; });
    };
    for (const ModelSet& set : sets) {
        for (const ModelProperty& property : set.properties) {
            takeEdit(properties.emplace_back(MergedProperty{set.name, property.name, &property}));
        }
        takeNew(set.name);
    }
    while (!rest.empty()) {
        takeNew(std::string(rest.front()->edit.set));
    }
    return properties;
}

MergedProperty mergedProperty(const std::vector<ModelSet>& sets, const std::vector<const EditIndex::Entry*>& edits,
                              std::string_view set, std::string_view name) {
    const std::vector<MergedProperty> all = merged(sets, edits);
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const MergedProperty& each) { return each.set == set && each.name == name; });
    return found == all.end() ? MergedProperty{std::string(set), std::string(name)} : *found;
}

std::vector<PropertyValue> valuesThatHold(const MergedProperty& property, const ModelUnits& units) {
    if (property.edit != nullptr) {
        return inProjectUnits(property.edit->edit, units).value_or(valuesInOrder(property.edit->edit));
    }
    return property.model == nullptr ? std::vector<PropertyValue>() : inProjectUnits(*property.model, units);
}

std::string_view comparisonOf(const MergedProperty& property, const ModelUnits& units) {
    if (property.edit == nullptr) {
        return "";
    }
    if (property.model == nullptr) {
        return "new";
    }
    return isSame(property, units) ? "same" : "differs";
}

std::string unitOf(const MergedProperty& property, const ModelUnits& units) {
    return property.edit == nullptr || property.edit->edit.unit.empty() ? modelUnit(property, units)
                                                                        : property.edit->edit.unit;
}

std::string unitBesideModel(const MergedProperty& property, const ModelUnits& units) {
    return property.edit == nullptr || property.edit->edit.unit == modelUnit(property, units)
               ? ""
               : property.edit->edit.unit;
}

std::string changedUnit(const MergedProperty& property, const ModelUnits& units) {
    const std::string unit = unitBesideModel(property, units);
    const std::string now = projectUnit(property, units);
    return unit.empty() || unit == now ? ""
                                       : property.set + '.' + property.name + " was set in " + unit +
                                             ", where the model has " + (now.empty() ? "no unit" : now) + '.';
}

} // namespace annotate
