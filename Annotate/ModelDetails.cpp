#include "Annotate/ModelDetails.h"

#include "Annotate/ModelFile.h"
#include "Annotate/StepParameters.h"
#include "Annotate/StepScanner.h"
#include "FoundationClasses/IfcClass.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace annotate {

using orv::fc::IfcClass;

namespace {

const IfcClass& classOf(std::string_view name) {
    return *IfcClass::find(name);
}

bool isOf(const ModelObject& object, const IfcClass& ifcClass) {
    return ifcClass.includes(*object.ifcClass);
}

/// Adds what the object has from elsewhere to the sets that it has otherwise, of which there are count; without the
/// properties that those have.
void addInherited(std::vector<ModelSet>& sets, std::size_t count, std::string_view from, ModelSet inherited) {
    const auto end = sets.begin() + static_cast<std::ptrdiff_t>(count);
    const auto isSame = [&](const ModelSet& set) {
        return set.name == inherited.name && set.isQuantities == inherited.isQuantities;
    };
    const auto isKnown = [&](const ModelProperty& property) {
        return std::any_of(sets.begin(), end, [&](const ModelSet& set) {
            return isSame(set) &&
                   std::any_of(set.properties.begin(), set.properties.end(), [&](const ModelProperty& each) {
                       return each.name == property.name && each.from != from;
                   });
        });
    };
    std::erase_if(inherited.properties, isKnown);
    for (ModelProperty& property : inherited.properties) {
        property.from = from;
    }
    if (const auto known = std::find_if(sets.begin(), end, isSame); known != end) {
        std::move(inherited.properties.begin(), inherited.properties.end(), std::back_inserter(known->properties));
    } else {
        sets.push_back(std::move(inherited));
    }
}

} // namespace

class ModelDetails::Reader : public InstanceReader {
public:
    void take(StepScanner& scanner, const ModelInstance& instance) override {
        if (const StatementClass* const statementClass = StatementClass::find(instance)) {
            takeStatement(scanner, instance, *statementClass);
        } else if (const IfcClass* const ifcClass = objectClass(instance)) {
            takeObjectAndSets(scanner, instance, *ifcClass);
        } else {
            scanner.skipStatement();
        }
    }

    std::vector<ModelObject> objects;
    ModelStatements statements;
    ModelRelations relations;
    std::vector<std::uint64_t> unitAssignments;

private:
    void takeStatement(StepScanner& scanner, const ModelInstance& instance, const StatementClass& statementClass) {
        const std::uint64_t id = instanceNumber(scanner, instance);
        const std::uintmax_t start = scanner.position();
        scanner.skipStatement();
        const std::string_view text = scanner.textSince(start);
        if (ModelRelations::takes(statementClass.kind)) {
            relations.add(statementClass.kind, StepParameters(text));
        } else {
            statements.add(id, statementClass, text);
        }
    }

    void takeObjectAndSets(StepScanner& scanner, const ModelInstance& instance, const IfcClass& ifcClass) {
        const std::uintmax_t start = scanner.position();
        ModelObject object = takeObject(scanner, instance, ifcClass);
        if (isOf(object, typeObject)) {
            relations.addDefinitions(object.id, StepParameters(scanner.textSince(start))[5].references());
        } else if (isOf(object, project)) {
            unitAssignments.push_back(StepParameters(scanner.textSince(start))[8].reference());
        }
        objects.push_back(std::move(object));
    }

    const IfcClass& typeObject = classOf("IfcTypeObject");
    const IfcClass& project = classOf("IfcProject");
};

ModelDetails ModelDetails::read(const std::filesystem::path& path) {
    Reader reader;
    readModelFile(path, reader);
    reader.statements.sort();
    reader.relations.sort();
    try {
        return ModelDetails(reader, path);
    } catch (const StepError& problem) {
        throw brokenModel(path, problem.what());
    }
}

namespace {

std::vector<std::uint64_t> assignedUnits(const ModelStatements& statements,
                                         const std::vector<std::uint64_t>& assignments) {
    std::vector<std::uint64_t> assigned;
    for (const std::uint64_t id : assignments) {
        const auto statement = statements.find(id);
        if (statement.statementClass->kind == StatementKind::UnitAssignment) {
            const std::vector<std::uint64_t> more = StepParameters(statement.text)[0].references();
            assigned.insert(assigned.end(), more.begin(), more.end());
        }
    }
    return assigned;
}

} // namespace

ModelDetails::ModelDetails(Reader& reader, std::filesystem::path path)
    : file(std::move(path)),
      model(std::move(reader.objects)),
      statements(std::move(reader.statements)),
      relations(std::move(reader.relations)),
      units(statements, assignedUnits(statements, reader.unitAssignments)),
      materials(statements) {
    for (const ModelObject& object : model.getObjects()) {
        objectsByNumber.push_back(&object);
    }
    std::stable_sort(objectsByNumber.begin(), objectsByNumber.end(),
                     [](const ModelObject* a, const ModelObject* b) { return a->id < b->id; });
}

std::vector<ModelSet> ModelDetails::setsOf(const ModelObject& object) const {
    std::vector<ModelSet> sets;
    try {
        addSetsOf(object.id, "", sets);
        addSetsOf(relations.declarationOf(object.id), fromDeclaration, sets);
        addSetsOf(relations.typeOf(object.id), fromType, sets);
    } catch (const StepError& problem) {
        throw brokenModel(file, problem.what());
    }
    return sets;
}

void ModelDetails::addSetsOf(std::uint64_t id, std::string_view from, std::vector<ModelSet>& sets) const {
    const std::size_t count = sets.size();
    for (const std::uint64_t definition : relations.definitionsOf(id)) {
        if (auto set = readSet(statements, units, definition)) {
            if (from.empty()) {
                sets.push_back(std::move(*set));
            } else {
                addInherited(sets, count, from, std::move(*set));
            }
        }
    }
}

std::vector<ModelSet> ModelDetails::materialSetsOf(const ModelObject& object) const {
    std::vector<ModelSet> sets;
    try {
        const std::uint64_t own = relations.materialOf(object.id);
        const std::uint64_t material = own != 0 ? own : relations.materialOf(relations.typeOf(object.id));
        for (const auto& [name, id] : materials.propertiesOf(statements, material)) {
            if (auto set = readSet(statements, units, id)) {
                for (ModelProperty& property : set->properties) {
                    property.from = "material " + name;
                }
                sets.push_back(std::move(*set));
            }
        }
    } catch (const StepError& problem) {
        throw brokenModel(file, problem.what());
    }
    return sets;
}

std::vector<const ModelObject*> ModelDetails::placeOf(const ModelObject& object) const {
    static const IfcClass& spatialElement = classOf("IfcSpatialElement");
    std::vector<const ModelObject*> place;
    std::unordered_set<std::uint64_t> visited; // a broken model can have an object in itself
    for (std::uint64_t id = relations.parentOf(object.id); id != 0 && visited.insert(id).second;
         id = relations.parentOf(id)) {
        const ModelObject* const parent = objectOf(id);
        if (parent != nullptr && isOf(*parent, spatialElement)) {
            place.push_back(parent);
        }
    }
    std::reverse(place.begin(), place.end());
    return place;
}

const ModelObject* ModelDetails::storeyOf(const ModelObject& object) const {
    static const IfcClass& storey = classOf("IfcBuildingStorey");
    if (isOf(object, storey)) {
        return &object;
    }
    const std::vector<const ModelObject*> place = placeOf(object);
    const auto found =
        std::find_if(place.rbegin(), place.rend(), [](const ModelObject* each) { return isOf(*each, storey); });
    return found == place.rend() ? nullptr : *found;
}

const ModelObject* ModelDetails::typeOf(const ModelObject& object) const {
    return objectOf(relations.typeOf(object.id));
}

const ModelObject* ModelDetails::declarationOf(const ModelObject& object) const {
    return objectOf(relations.declarationOf(object.id));
}

const ModelObject* ModelDetails::objectOf(std::uint64_t id) const {
    const auto found =
        std::lower_bound(objectsByNumber.begin(), objectsByNumber.end(), id,
                         [](const ModelObject* object, std::uint64_t wanted) { return object->id < wanted; });
    return found == objectsByNumber.end() || (*found)->id != id ? nullptr : *found;
}

} // namespace annotate
