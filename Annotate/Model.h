#pragma once

#include "Id/Guid.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace orv::fc {
struct IfcClass;
}

namespace annotate {

/// An object of a building model: an instance of a class below IfcObjectDefinition.
struct ModelObject {
    std::uint64_t id = 0;                        ///< The number of the instance in its file.
    const orv::fc::IfcClass* ifcClass = nullptr; ///< Its class; never null in a model.
    std::string globalId;                        ///< The GlobalId as the file spells it, valid or not.
    std::string name;                            ///< The Name in UTF-8; empty if it has none.
};

/// A model that cannot be read. what() tells the user why and what to do, in whole sentences that name the file.
class ModelError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The objects of an IFC model. A model is read and never written.
class Model {
public:
    /// Reads a model of IFC2X3, IFC4 or a later schema from a file in the STEP physical file form (ISO
    /// 10303-21), by itself or packed in a zip archive. Throws ModelError if path isn't a file of that form, or is cut
    /// off, or has a syntax error. In a terminal a large model shows how far it is.
    static Model read(const std::filesystem::path& path);

    explicit Model(std::vector<ModelObject> objectsInFileOrder);

    /// All objects in the order of the file.
    const std::vector<ModelObject>& getObjects() const { return objects; }

    /// The first object that has the id, null if there is none. An object whose GlobalId isn't valid has no id.
    const ModelObject* find(const orv::Guid& id) const;

private:
    std::vector<ModelObject> objects;
    std::unordered_map<orv::Guid, std::size_t> positions;
};

} // namespace annotate
