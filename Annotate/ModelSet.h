#pragma once

#include "Annotate/ModelUnits.h"
#include "IfcVersionMapping/Def.h"
#include "Object/PropertyValue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

class ModelStatements;

/// A property or a quantity of a model.
struct ModelProperty {
    std::string name; ///< That of a part of a complex one is like "Complex.Part".
    orv::ifc::def::xml::PropertyKind kind = orv::ifc::def::xml::PropertyKind::Single; ///< Never Complex.

    /// One; those of a list or an enumeration; upper bound, lower bound and set point; or of a table defining and
    /// defined in turn. What the model leaves out is an empty value, or no value at all.
    std::vector<orv::object::PropertyValue> values;

    std::string valueType;        ///< As in "IfcLengthMeasure"; the class of what a reference refers to.
    std::string definedValueType; ///< Of the defined values of a table.
    ModelUnit unit;               ///< Its symbol is empty if the values have none, or none is known.
    ModelUnit definedUnit;
    std::string from; ///< What the object has it from: fromType and the like; empty if it is its own.
};

/// From the object that declares what the object has, and from its type. What is nearer goes before what is farther.
constexpr std::string_view fromDeclaration = "declaration";
constexpr std::string_view fromType = "type";

/// A set of properties or of quantities.
struct ModelSet {
    std::string name;
    bool isQuantities = false;
    std::vector<ModelProperty> properties;
};

/// Reads a set with its properties, of an object or of a material; nothing if the instance isn't one. The attributes of
/// a class that has such are its properties, and its name is the name of the set. Throws StepError if a statement is
/// malformed.
std::optional<ModelSet> readSet(const ModelStatements& statements, const ModelUnits& units, std::uint64_t id);

/// What the property holds, on one line: one value as it is, several as itemsText makes it of them.
std::string valuesText(const ModelProperty& property);

/// The symbol of the unit; those of a table as unitsOfTable has them.
std::string unitText(const ModelProperty& property);

} // namespace annotate
