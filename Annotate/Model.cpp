#include "Annotate/Model.h"

#include "Annotate/ModelFile.h"
#include "Annotate/StepScanner.h"

#include <utility>

namespace annotate {

namespace {

class ObjectReader : public InstanceReader {
public:
    void take(StepScanner& scanner, const ModelInstance& instance) override {
        if (const orv::fc::IfcClass* const ifcClass = objectClass(instance)) {
            objects.push_back(takeObject(scanner, instance, *ifcClass));
        } else {
            scanner.skipStatement();
        }
    }

    std::vector<ModelObject> objects;
};

} // namespace

Model Model::read(const std::filesystem::path& path) {
    ObjectReader reader;
    readModelFile(path, reader);
    return Model(std::move(reader.objects));
}

Model::Model(std::vector<ModelObject> objectsInFileOrder) : objects(std::move(objectsInFileOrder)) {
    positions.reserve(objects.size());
    for (std::size_t position = 0; position < objects.size(); ++position) {
        orv::Guid id;
        const std::string& globalId = objects[position].globalId;
        // boSet takes UUIDs as well, which no IFC file has.
        if (id.boSet(globalId) && id.toString(false) == globalId) {
            positions.emplace(id, position);
        }
    }
}

const ModelObject* Model::find(const orv::Guid& id) const {
    const auto found = positions.find(id);
    return found == positions.end() ? nullptr : &objects[found->second];
}

} // namespace annotate
