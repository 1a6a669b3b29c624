#include "Annotate/MergedValues.h"

#include "Annotate/EditText.h"
#include "Annotate/UnitEntry.h"
#include "Annotate/ValueText.h"
#include "Host/FieldText.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>

namespace annotate {

using orv::object::PropertyValue;
using Form = orv::host::PropertyEdit::Form;

namespace {

bool isSet(const EditIndex::Entry& entry) {
    return entry.edit.form != Form::Unset;
}

/// The unit that the model has for the values of a property; empty if it has none.
std::string modelUnit(const MergedProperty& property, const ModelUnits& units) {
    if (property.model != nullptr && !unitText(*property.model).empty()) {
        return unitText(*property.model);
    }
    const auto* const definition = orv::ifc::findSchemaDefForProperty(property.set, property.name);
    return definition == nullptr ? "" : unitOfValues(*definition, units);
}

/// Without the empty ones at the end, which say nothing.
std::vector<std::string> textsOf(std::vector<PropertyValue> values) {
    std::vector<std::string> texts;
    std::transform(values.begin(), values.end(), std::back_inserter(texts), valueText);
    while (!texts.empty() && texts.back().empty()) {
        texts.pop_back();
    }
    return texts;
}

/// A number is the same however it is written.
bool isSameText(const std::string& text, const std::string& other) {
    double number = 0;
    double otherNumber = 0;
    return text == other ||
           (orv::host::take(text, number) && orv::host::take(other, otherNumber) && number == otherNumber);
}

bool isSame(const orv::host::PropertyEdit& edit, const ModelProperty& property) {
    const std::vector<std::string> own = textsOf(valuesInOrder(edit));
    const std::vector<std::string> models = textsOf(property.values);
    return editText(edit) == valuesText(property) ||
           std::equal(own.begin(), own.end(), models.begin(), models.end(), isSameText);
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

std::string_view comparisonOf(const MergedProperty& property, const ModelUnits& units) {
    if (property.edit == nullptr) {
        return "";
    }
    if (property.model == nullptr) {
        return "new";
    }
    return changedUnit(property, units).empty() && isSame(property.edit->edit, *property.model) ? "same" : "differs";
}

std::string unitOf(const MergedProperty& property, const ModelUnits& units) {
    return property.edit == nullptr || property.edit->edit.unit.empty() ? modelUnit(property, units)
                                                                        : property.edit->edit.unit;
}

std::string changedUnit(const MergedProperty& property, const ModelUnits& units) {
    const std::string of = modelUnit(property, units);
    if (property.edit == nullptr || property.edit->edit.unit.empty() || of == property.edit->edit.unit) {
        return "";
    }
    return property.set + '.' + property.name + " was set in " + property.edit->edit.unit + ", where the model has " +
           (of.empty() ? "no unit" : of) + '.';
}

} // namespace annotate
