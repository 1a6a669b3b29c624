#include "Annotate/ModelSet.h"

#include "Annotate/DirectAttributes.h"
#include "Annotate/ItemText.h"
#include "Annotate/ModelStatements.h"
#include "Annotate/StepParameters.h"
#include "Annotate/StepValue.h"
#include "Annotate/UnitSymbols.h"
#include "Annotate/ValueText.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace annotate {

using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;

namespace {

using Kind = StatementKind;

std::vector<StepParameter> elementsOf(StepParameter parameter) {
    std::vector<StepParameter> elements;
    if (parameter.is(StepParameter::Kind::List)) {
        for (const StepParameter element : parameter) {
            elements.push_back(element);
        }
    }
    return elements;
}

/// How many complex properties can be in each other; more are none that somebody made.
constexpr int maximumDepth = 32;

class SetReader {
public:
    SetReader(const ModelStatements& from, const ModelUnits& declaredUnits) : statements(from), units(declaredUnits) {}

    std::optional<ModelSet> read(std::uint64_t id) {
        const auto statement = statements.find(id);
        switch (statement.statementClass->kind) {
        case Kind::PropertySet:
            begin(StepParameters(statement.text), 2, 4);
            break;
        case Kind::QuantitySet:
            set.isQuantities = true;
            begin(StepParameters(statement.text), 2, 5);
            break;
        case Kind::MaterialProperties:
            begin(StepParameters(statement.text), 0, 2);
            break;
        case Kind::ExtendedMaterialProperties:
            begin(StepParameters(statement.text), 3, 1);
            break;
        case Kind::PredefinedSet:
        case Kind::MaterialAttributes:
            addAttributes(*statement.statementClass, StepParameters(statement.text));
            break;
        default:
            return std::nullopt;
        }
        while (!pending.empty()) {
            const Pending next = std::move(pending.back());
            pending.pop_back();
            add(next);
        }
        return std::move(set);
    }

private:
    struct Pending {
        std::string prefix;
        int depth;
        std::uint64_t id;
    };

    /// With its name and its members at those places.
    void begin(const StepParameters& parameters, std::size_t name, std::size_t members) {
        set.name = textIn(parameters[name]);
        push("", 0, parameters[members]);
    }

    /// The attributes that are given. What programs write for the Name of such a set is that of its type.
    void addAttributes(const StatementClass& setClass, const StepParameters& parameters) {
        set.name = setClass.name;
        for (const DirectAttribute& attribute : directAttributesOf(setClass.name)) {
            ModelProperty property;
            property.name = attribute.name;
            addValues(property, {parameters[attribute.place]});
            if (property.valueType.empty()) {
                property.valueType = attribute.valueType;
            }
            if (!property.values.front().isEmpty()) {
                property.unit = unitOf(0, property.valueType);
                set.properties.push_back(std::move(property));
            }
        }
    }

    void push(const std::string& prefix, int depth, StepParameter members) {
        const auto first = static_cast<std::ptrdiff_t>(pending.size());
        for (const std::uint64_t id : members.references()) {
            pending.push_back({prefix, depth, id});
        }
        std::reverse(pending.begin() + first, pending.end());
    }

    void add(const Pending& member) {
        const auto statement = statements.find(member.id);
        const Kind kind = statement.statementClass->kind;
        const bool isComplex = kind == Kind::ComplexProperty || kind == Kind::ComplexQuantity;
        if (!isComplex && !isMember(kind)) {
            return;
        }
        const StepParameters parameters(statement.text);
        std::string name = member.prefix + textIn(parameters[0]);
        if (!isComplex) {
            ModelProperty property;
            property.name = std::move(name);
            fill(property, *statement.statementClass, parameters);
            set.properties.push_back(std::move(property));
        } else if (member.depth < maximumDepth && complexOnes.insert(member.id).second) {
            push(name + '.', member.depth + 1, parameters[kind == Kind::ComplexProperty ? 3 : 2]);
        }
    }

    static bool isMember(Kind kind) {
        switch (kind) {
        case Kind::SingleValue:
        case Kind::EnumeratedValue:
        case Kind::BoundedValue:
        case Kind::ListValue:
        case Kind::TableValue:
        case Kind::ReferenceValue:
        case Kind::Quantity:
            return true;
        default:
            return false;
        }
    }

    void fill(ModelProperty& property, const StatementClass& statementClass, const StepParameters& parameters) const {
        switch (statementClass.kind) {
        case Kind::EnumeratedValue:
            property.kind = PropertyKind::Enumerated;
            addValues(property, elementsOf(parameters[2]));
            property.unit = unitOf(enumerationUnit(parameters[3].reference()), property.valueType);
            break;
        case Kind::BoundedValue:
            property.kind = PropertyKind::Bounded;
            addValues(property, {parameters[2], parameters[3], parameters[5]});
            property.unit = unitOf(parameters[4].reference(), property.valueType);
            break;
        case Kind::ListValue:
            property.kind = PropertyKind::List;
            addValues(property, elementsOf(parameters[2]));
            property.unit = unitOf(parameters[3].reference(), property.valueType);
            break;
        case Kind::TableValue:
            fillTable(property, parameters);
            break;
        case Kind::ReferenceValue:
            property.kind = PropertyKind::Reference;
            fillReference(property, parameters[3].reference());
            break;
        case Kind::Quantity:
            addValues(property, {parameters[3]});
            property.valueType = measureOf(statementClass);
            property.unit = unitOf(parameters[2].reference(), property.valueType);
            break;
        default:
            addValues(property, {parameters[2]});
            property.unit = unitOf(parameters[3].reference(), property.valueType);
        }
    }

    static void addValues(ModelProperty& property, const std::vector<StepParameter>& parameters) {
        for (const StepParameter parameter : parameters) {
            StepValue value = stepValue(parameter);
            property.values.push_back(std::move(value.value));
            if (property.valueType.empty()) {
                property.valueType = std::move(value.type);
            }
        }
    }

    void fillTable(ModelProperty& property, const StepParameters& parameters) const {
        property.kind = PropertyKind::Table;
        ModelProperty defined;
        addValues(property, elementsOf(parameters[2]));
        addValues(defined, elementsOf(parameters[3]));
        property.definedValueType = defined.valueType;
        property.unit = unitOf(parameters[5].reference(), property.valueType);
        property.definedUnit = unitOf(parameters[6].reference(), defined.valueType);
        const std::size_t rows = std::max(property.values.size(), defined.values.size());
        property.values.resize(rows);
        defined.values.resize(rows);
        std::vector<PropertyValue> inTurn;
        for (std::size_t row = 0; row < rows; ++row) {
            inTurn.push_back(std::move(property.values[row]));
            inTurn.push_back(std::move(defined.values[row]));
        }
        property.values = std::move(inTurn);
    }

    /// What is referred to is shown by the first text that it holds, which is its name or its number with most.
    void fillReference(ModelProperty& property, std::uint64_t id) const {
        if (id == 0) {
            return;
        }
        const auto statement = statements.find(id);
        std::string text = '#' + std::to_string(id);
        if (statement.statementClass->kind == Kind::Referenced) {
            const StepParameters parameters(statement.text);
            for (const StepParameter parameter : parameters.all()) {
                if (parameter.is(StepParameter::Kind::String)) {
                    text = textIn(parameter);
                    break;
                }
            }
            property.valueType = statement.statementClass->name;
        }
        property.values.emplace_back(std::move(text));
    }

    std::uint64_t enumerationUnit(std::uint64_t enumeration) const {
        const auto statement = statements.find(enumeration);
        return statement.statementClass->kind == Kind::Enumeration ? StepParameters(statement.text)[2].reference() : 0;
    }

    /// A property's own unit, else that of the project.
    ModelUnit unitOf(std::uint64_t own, std::string_view valueType) const {
        const ModelUnit* const unit = own != 0 ? units.ofInstance(own) : units.ofType(valueType);
        return unit == nullptr ? ModelUnit{} : *unit;
    }

    static std::string measureOf(const StatementClass& quantity) {
        constexpr std::string_view start = "IfcQuantity";
        const std::string measured(quantity.name.substr(start.size()));
        if (measured == "Weight") {
            return "IfcMassMeasure";
        }
        return measured == "Number" ? "IfcNumericMeasure" : "Ifc" + measured + "Measure";
    }

    const ModelStatements& statements;
    const ModelUnits& units;
    ModelSet set;
    std::vector<Pending> pending;                  ///< What is still to be read, the next at the end.
    std::unordered_set<std::uint64_t> complexOnes; ///< Those that were read, as one can be in itself.
};

} // namespace

std::optional<ModelSet> readSet(const ModelStatements& statements, const ModelUnits& units, std::uint64_t id) {
    return SetReader(statements, units).read(id);
}

std::string valuesText(const ModelProperty& property) {
    std::vector<PropertyValue> values = property.values;
    const bool isSingle = property.kind == PropertyKind::Single || property.kind == PropertyKind::Reference;
    if (isSingle && values.size() == 1) {
        return valueText(values.front());
    }
    if (property.kind == PropertyKind::Bounded) { // without the bounds at the end that are left out
        while (!values.empty() && values.back().isEmpty()) {
            values.pop_back();
        }
    }
    return itemsText(values, property.kind == PropertyKind::Table);
}

std::string unitText(const ModelProperty& property) {
    return unitsOfTable(property.unit.symbol, property.definedUnit.symbol);
}

} // namespace annotate
