#pragma once

#include "Annotate/Model.h"
#include "Annotate/ModelMaterials.h"
#include "Annotate/ModelRelations.h"
#include "Annotate/ModelSet.h"
#include "Annotate/ModelStatements.h"
#include "Annotate/ModelUnits.h"

#include <cstddef>
#include <filesystem>
#include <utility>
#include <vector>

namespace annotate {

/// A model with what its file tells about the objects: values, places, types. Reading it takes longer than reading the
/// objects alone, and keeps the statements that matter in memory; they are parsed for the objects that are asked for.
/// What it returns pointers to lives as long as this. Objects are those of getModel.
class ModelDetails {
public:
    /// Throws ModelError where Model::read does, and if a statement that is needed at once is malformed.
    static ModelDetails read(const std::filesystem::path& path);

    const std::filesystem::path& getPath() const { return file; }
    const Model& getModel() const { return model; }
    const ModelUnits& getUnits() const { return units; }

    /// Those of sets, of what is in them and of units.
    const ModelStatements& getStatements() const { return statements; }

    /// The instances of sets that are assigned to the object itself, in the order of the file.
    std::vector<std::uint64_t> assignedSets(const ModelObject& object) const {
        return relations.definitionsOf(object.id);
    }

    /// The object's sets of properties and of quantities, and those of the object that declares it and of its type with
    /// what it has no value of its own for. Throws ModelError if the statement of one is malformed.
    std::vector<ModelSet> setsOf(const ModelObject& object) const;

    /// The sets of properties of the materials that the object is made of, or else its type. Throws as setsOf does.
    std::vector<ModelSet> materialSetsOf(const ModelObject& object) const;

    /// The site, building, storey and the like that the object is in, the outermost first. A part of something is where
    /// that is, and so is what fills an opening.
    std::vector<const ModelObject*> placeOf(const ModelObject& object) const;

    /// Null if it is in none. A storey is in itself.
    const ModelObject* storeyOf(const ModelObject& object) const;

    /// Null if it has none.
    const ModelObject* typeOf(const ModelObject& object) const;

    /// The object that declares what this one has; null if there is none.
    const ModelObject* declarationOf(const ModelObject& object) const;

private:
    class Reader;

    explicit ModelDetails(Reader& reader, std::filesystem::path path);

    void addSetsOf(std::uint64_t id, std::string_view from, std::vector<ModelSet>& sets) const;
    const ModelObject* objectOf(std::uint64_t id) const;

    std::filesystem::path file;
    Model model;
    std::vector<const ModelObject*> objectsByNumber;
    ModelStatements statements;
    ModelRelations relations;
    ModelUnits units;
    ModelMaterials materials;
};

} // namespace annotate
