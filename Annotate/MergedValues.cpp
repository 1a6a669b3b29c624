#include "Annotate/MergedValues.h"

#include "Annotate/Arguments.h"
#include "Annotate/EditText.h"
#include "Annotate/UnitEntry.h"
#include "Annotate/ValueText.h"
#include "Host/FieldText.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace annotate {

using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;

namespace {

/// How far away it is that an object has something from.
int distanceOf(std::string_view from) {
    return from.empty() ? 0 : from == fromDeclaration ? 1 : 2;
}

/// Takes the edit, unless the model has the value from something nearer.
void take(const HeldEdit& edit, MergedProperty& property) {
    if (property.model == nullptr || distanceOf(edit.from) <= distanceOf(property.model->from)) {
        property.edit = edit.entry;
        property.editFrom = edit.from;
    }
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

std::vector<MergedProperty> merged(const std::vector<ModelSet>& sets, const std::vector<HeldEdit>& edits) {
    std::vector<MergedProperty> properties;
    std::vector<HeldEdit> rest = edits;
    const auto takeEdit = [&rest](MergedProperty& property) {
        const auto found = std::find_if(rest.begin(), rest.end(), [&property](const HeldEdit& held) {
            return held.entry->edit.set == property.set && held.entry->edit.property == property.name;
        });
        if (found != rest.end()) {
            take(*found, property);
            rest.erase(found);
        }
    };
    const auto takeNew = [&](const std::string& set) {
        for (const HeldEdit& held : rest) {
            if (held.entry->edit.set == set) {
                properties.push_back({set, held.entry->edit.property, nullptr, held.entry, held.from});
            }
        }
        std::erase_if(rest, [&set](const HeldEdit& held) { return held.entry->edit.set == set; });
    };
    for (const ModelSet& set : sets) {
        for (const ModelProperty& property : set.properties) {
            takeEdit(properties.emplace_back(MergedProperty{set.name, property.name, &property}));
        }
        takeNew(set.name);
    }
    while (!rest.empty()) {
        takeNew(std::string(rest.front().entry->edit.set));
    }
    return properties;
}

MergedProperty mergedProperty(const std::vector<ModelSet>& sets, const HeldEdit& edit, std::string_view set,
                              std::string_view name) {
    MergedProperty property{std::string(set), std::string(name)};
    for (const ModelSet& each : sets) {
        const auto found = std::find_if(each.properties.begin(), each.properties.end(), [&](const auto& candidate) {
            return each.name == set && candidate.name == name;
        });
        if (found != each.properties.end()) {
            property.model = &*found;
            break;
        }
    }
    if (edit.entry != nullptr) {
        take(edit, property);
    }
    return property;
}

std::vector<PropertyValue> valuesThatHold(const MergedProperty& property, const ModelUnits& units) {
    if (property.edit != nullptr) {
        return inProjectUnits(property.edit->edit, units).value_or(valuesInOrder(property.edit->edit));
    }
    return property.model == nullptr ? std::vector<PropertyValue>() : inProjectUnits(*property.model, units);
}

Comparison comparisonOf(const MergedProperty& property, const ModelUnits& units) {
    if (property.edit == nullptr) {
        return Comparison::None;
    }
    if (property.model == nullptr) {
        return Comparison::New;
    }
    return isSame(property, units) ? Comparison::Same : Comparison::Differs;
}

std::string_view comparisonWord(Comparison comparison) {
    constexpr std::array<std::string_view, 4> words = {"", "new", "same", "differs"};
    return words.at(static_cast<std::size_t>(comparison));
}

std::string comparisonText(const MergedProperty& property, const ModelUnits& units) {
    std::string text(comparisonWord(comparisonOf(property, units)));
    return property.editFrom.empty() ? text : text.append(", from ").append(property.editFrom);
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

std::vector<std::string> textsThatHold(const MergedProperty& property, const ModelUnits& units) {
    std::vector<std::string> texts;
    for (const orv::object::PropertyValue& value : valuesThatHold(property, units)) {
        if (!value.isEmpty()) {
            texts.push_back(valueText(value));
        }
    }
    return texts;
}

} // namespace annotate
