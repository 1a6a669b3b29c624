// The restoring of 10,000 edits, so many an object, held against plain writes of the same values.

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Host/Overlay.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Support/TemporaryDirectory.h"

#include <benchmark/benchmark.h>

namespace orv::host {

namespace {

using domain::shared::enhancementsforreferencemodel::EnhancementBase;
using domain::shared::enhancementsforreferencemodel::Enhancements;
using domain::shared::enhancementsforreferencemodel::EnhancementsFile;
using domain::shared::enhancementsforreferencemodel::PsetData;

constexpr std::size_t editCount = 10'000;

std::vector<PropertyEdit> editsOfAnObject(std::size_t count) {
    std::vector<PropertyEdit> edits;
    for (const auto& definition : ifc::definitions()) {
        if (edits.size() < count && definition.valueType == "IfcLabel" &&
            definition.kind == ifc::def::xml::PropertyKind::Single) {
            PropertyEdit& edit = edits.emplace_back();
            edit.set = definition.propertySet;
            edit.property = definition.property;
            edit.values = {"cast in place, C30/37 XC4"};
            edit.author = "Anna";
        }
    }
    return edits;
}

/// A model, and a file with the edits of its objects. Lives until the next one is made.
class Project {
public:
    explicit Project(std::size_t editsPerObject) : edits(editsOfAnObject(editsPerObject)) {
        std::vector<std::unique_ptr<EnhancementBase>> records;
        for (std::uint32_t number = 1; number <= editCount / editsPerObject; ++number) {
            ids.push_back({number * 2'654'435'761U, 0, 0, {}});
            model->entityCreate("IfcWall")->guid = ids.back();
            auto record = std::make_unique<PropertyEdits>();
            record->ownerId = ids.back();
            for (const PropertyEdit& edit : edits) {
                record->lines.push_back(lineOf(edit));
            }
            records.push_back(std::move(record));
        }
        PsetData::getPsetShadowDbReadWriteCallbackSet([this] { return std::pair(shadows, ScopeGuard()); });
        PsetData::getObjectFromGuidCallbackSet(findInModel);
        static const tests::TemporaryDirectory directory;
        EnhancementsFile::setFilePath(directory / "store.xml");
        Enhancements::getOrCreateEnhancementsDb()->resetDb();
        isStored = Enhancements::addEnhancements(records);
    }

    bool isStored = false;
    std::vector<PropertyEdit> edits; ///< Of each object.
    std::vector<Guid> ids;
    std::shared_ptr<fc::Data> model = std::make_shared<fc::Data>();
    std::shared_ptr<fc::FcShadowDb> shadows;
    const Overlay::FindObject findInModel = [this](const Guid& id) {
        return std::dynamic_pointer_cast<const fc::core::kernel::FcObjectDefinition>(model->findByGuid(id));
    };
};

/// Times the action on shadow databases that are new.
template <typename Action>
void time(benchmark::State& state, Action action) {
    Project project(static_cast<std::size_t>(state.range(0)));
    if (!project.isStored) {
        state.SkipWithError("the edits can't be stored");
    }
    for ([[maybe_unused]] const auto iteration : state) {
        state.PauseTiming();
        project.shadows = std::make_shared<fc::FcShadowDb>();
        state.ResumeTiming();
        action(project);
    }
}

void restore(benchmark::State& state) {
    time(state, [&state](Project& project) {
        if (!Overlay(project.findInModel, "Anna").restore().empty()) {
            state.SkipWithError("an edit isn't restored");
        }
    });
}

void writePlainly(benchmark::State& state) {
    time(state, [](Project& project) {
        PsetData overlay(false);
        for (const Guid& id : project.ids) {
            for (const PropertyEdit& edit : project.edits) {
                overlay.setValue(id, edit.set, edit.property, edit.values.front());
            }
        }
    });
}

BENCHMARK(restore)->Name("restoreEdits/ours")->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(writePlainly)->Name("restoreEdits/plain writes")->Arg(1)->Arg(10)->Arg(100);

} // namespace

} // namespace orv::host
