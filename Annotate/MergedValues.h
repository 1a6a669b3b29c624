#pragma once

#include "Annotate/HeldEdits.h"
#include "Annotate/ModelDetails.h"

#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// A property of an object, as the model has it and as a user set it.
struct MergedProperty {
    std::string set;
    std::string name;
    const ModelProperty* model = nullptr;   ///< Null if the model doesn't have it.
    const EditIndex::Entry* edit = nullptr; ///< Null if none holds: there is none, or the model's is nearer.
    std::string_view editFrom{};            ///< As that of a HeldEdit.
};

/// How an edit stands to the model's value.
enum class Comparison { None, New, Same, Differs };

/// The properties of the sets in their order, each with the edit on it. What only edits have stands behind the others
/// of its set, or behind the other sets. Refers to what is given.
std::vector<MergedProperty> merged(const std::vector<ModelSet>& sets, const std::vector<HeldEdit>& edits);

/// The property of that name, with its edit; one with two null pointers if there is none.
MergedProperty mergedProperty(const std::vector<ModelSet>& sets, const HeldEdit& edit, std::string_view set,
                              std::string_view name);

/// The values that hold, those of the edit, otherwise the model's. Numbers are in the project's unit, as are those that
/// users give without one; where that isn't known, or theirs isn't, they are as they stand.
std::vector<orv::object::PropertyValue> valuesThatHold(const MergedProperty& property, const ModelUnits& units);

/// Values are the same in whatever units.
Comparison comparisonOf(const MergedProperty& property, const ModelUnits& units);

/// As in "differs"; empty without an edit.
std::string_view comparisonWord(Comparison comparison);

/// The same in a word, and what has the edit if it isn't the object, as in "differs, from type"; empty without an edit.
std::string comparisonText(const MergedProperty& property, const ModelUnits& units);

/// The unit of what holds: that in which the user gave the values, otherwise that of the model's, or that which the
/// model has for the values of such a property. Empty if there is none, or none is known.
std::string unitOf(const MergedProperty& property, const ModelUnits& units);

/// The unit of the edit, if the model's value isn't in it; empty otherwise.
std::string unitBesideModel(const MergedProperty& property, const ModelUnits& units);

/// That the project's unit has changed since the edit was made, in a sentence; empty if it hasn't.
std::string changedUnit(const MergedProperty& property, const ModelUnits& units);

/// The values that hold, as texts, without empty ones; of an enumeration each choice.
std::vector<std::string> textsThatHold(const MergedProperty& property, const ModelUnits& units);

} // namespace annotate
