#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace annotate {

struct ModelInstance;

/// The classes whose instances tell something about the objects of a model.
enum class StatementKind : std::uint8_t {
    None,
    // Relations.
    Aggregates,
    AssociatesMaterial,
    Contained,
    DefinesByObject,
    DefinesByProperties,
    DefinesByType,
    Fills,
    Nests,
    Projects,
    Voids,
    // Sets and what is in them.
    PropertySet,
    QuantitySet,
    PredefinedSet,
    MaterialProperties,
    ExtendedMaterialProperties,
    MaterialAttributes,
    ProfileProperties,
    SingleValue,
    EnumeratedValue,
    Enumeration,
    BoundedValue,
    ListValue,
    TableValue,
    ReferenceValue,
    ComplexProperty,
    Quantity,
    ComplexQuantity,
    // Units.
    SiUnit,
    ConversionUnit,
    DerivedUnit,
    DerivedUnitElement,
    MonetaryUnit,
    ContextUnit,
    MeasureWithUnit,
    UnitAssignment,
    // What a reference value can refer to.
    Referenced,
};

/// A class among those of StatementKind.
struct StatementClass {
    std::string_view name; ///< As the schema spells it.
    StatementKind kind = StatementKind::None;

    /// Null if the instance is of another class.
    static const StatementClass* find(const ModelInstance& instance);
};

/// Statements of a model's file by the numbers of their instances.
class ModelStatements {
public:
    struct Statement {
        const StatementClass* statementClass;
        std::string_view text; ///< From behind the '(' of its parameters on; may go beyond its end.
    };

    /// Keeps a copy of the text.
    void add(std::uint64_t id, const StatementClass& statementClass, std::string_view text);

    /// To be called after the last one was added.
    void sort();

    /// The statement of the instance, without text if there is none.
    Statement find(std::uint64_t id) const;

    /// Calls each with the number and the kind of every statement.
    template <typename Each>
    void forEach(const Each& each) const {
        for (const Entry& entry : entries) {
            each(entry.id, classOf(entry).kind);
        }
    }

private:
    struct Entry {
        std::uint64_t id;
        std::uint32_t block;
        std::uint32_t place : 24; ///< In the block.
        std::uint32_t row : 8;    ///< Of the table of classes.
    };

    static const StatementClass& classOf(const Entry& entry);

    // Neither is ever moved as a whole, so that no memory is needed for two of it.
    std::deque<std::string> blocks;
    std::deque<Entry> entries;
};

/// The place of the members among the parameters of a set of properties.
constexpr std::size_t membersOfSet = 4;

} // namespace annotate
