#include "Annotate/AnyCase.h"
#include "Annotate/Commands.h"
#include "Annotate/DefinitionFiles.h"
#include "Annotate/Definitions.h"
#include "Annotate/ModelFile.h"
#include "Annotate/ObjectClasses.h"
#include "Annotate/Table.h"
#include "Annotate/UnitSymbols.h"
#include "IfcVersionMapping/SetApplicability.h"

#include <algorithm>
#include <map>
#include <system_error>

namespace annotate {

using orv::fc::IfcClass;

namespace {

/// Chooses sets by the classes that they are for.
class ClassFilter {
public:
    explicit ClassFilter(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            classes.push_back(&objectClassNamed(name));
        }
    }

    /// One that names no class is for all.
    bool takes(const std::string& set) {
        const auto [known, isNew] = sets.try_emplace(set, classes.empty());
        if (isNew && !classes.empty()) {
            const auto applicable = orv::ifc::applicableClasses(set);
            known->second =
                applicable.empty() || std::any_of(applicable.begin(), applicable.end(), [this](const auto& each) {
                    const IfcClass* const ifcClass = IfcClass::find(each.name);
                    return ifcClass != nullptr && includesOne(*ifcClass);
                });
        }
        return known->second;
    }

private:
    bool includesOne(const IfcClass& general) const {
        return std::any_of(classes.begin(), classes.end(),
                           [&general](const IfcClass* each) { return general.includes(*each); });
    }

    std::vector<const IfcClass*> classes;
    std::map<std::string, bool> sets;
};

/// The SI unit of the values; those of a table as DEFINING=DEFINED.
std::string unitOf(const Definition& definition) {
    const std::string unit = siSymbol(definition.valueType);
    const std::string defined = siSymbol(definition.definedValueType);
    const bool isPair = definition.kind == orv::ifc::def::xml::PropertyKind::Table && !defined.empty();
    return unit + (isPair ? "=" : "") + defined;
}

void requireModel(const std::filesystem::path& model) {
    std::error_code ignored;
    if (!model.empty() && !std::filesystem::exists(model, ignored)) {
        throw refusedModel(model, "doesn't exist or cannot be reached", "Check the path.");
    }
}

} // namespace

void listDefinitions(const Arguments& arguments) {
    requireModel(arguments.model);
    takeOwnDefinitions(arguments, true);
    ClassFilter filter(arguments.classes);
    const AnyCase match(arguments.match);
    bool isSetKnown = arguments.propertySet.empty();
    std::vector<Row> rows;
    for (const Definition* const definition : allDefinitions()) {
        const std::string set(definition->propertySet);
        const std::string property(definition->property);
        if (!arguments.propertySet.empty() && set != arguments.propertySet) {
            continue;
        }
        isSetKnown = true;
        if (filter.takes(set) && (match.isIn(set) || match.isIn(property))) {
            rows.push_back({set, property, std::string(kindName(definition->kind)), shownType(*definition),
                            unitOf(*definition), std::string(definition->source),
                            std::string(definition->enumerationValues)});
        }
    }
    if (!isSetKnown) {
        throw unknownSet(arguments.propertySet);
    }
    printTable(arguments, {{"Property set"}, {"Property"}, {"Kind"}, {"Type"}, {"Unit"}, {"Source"}, {"Values"}}, rows);
}

} // namespace annotate
