// A plug-in that leaves something of its own in every place that the libraries have for it.

#include "Assert/Assert.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"

using namespace orv::domain::shared::enhancementsforreferencemodel;

namespace {

void (*tell)(const char* text) = nullptr;

std::shared_ptr<const char> traced(const char* name) {
    return {name, [](const char* destroyed) { tell(destroyed); }};
}

class Mark : public EnhancementBase {
public:
    explicit Mark(const char* role) : trace(traced(role)) {}

    std::string getEntityName() const override { return "Mark"; }
    std::vector<std::pair<std::string, orv::object::PropertyValue>> getAttributes() const override { return {}; }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<Mark>("loaded"); }

private:
    std::shared_ptr<const char> trace;
};

} // namespace

/// Tells through report what it finds and, by name, each thing of its own that is destroyed.
extern "C" __attribute__((visibility("default"))) void use(const char* store, void (*report)(const char* text)) {
    tell = report;
    tell(orv::assert::Assert::isEnabled() || Factory::createEntityFromName("Mark") ? "used before" : "fresh");
    orv::assert::Assert::setEnabled(true);
    orv::assert::Assert::setReceiver([trace = traced("receiver")](const auto&) { tell("report"); });
    const PsetData withoutDatabase;
    const auto database = std::make_shared<orv::fc::FcShadowDb>();
    PsetData::getPsetShadowDbReadOnlyCallbackSet([database, trace = traced("read-only")] { return database; });
    PsetData::getPsetShadowDbReadWriteCallbackSet(
        [database, trace = traced("read-write")] { return std::pair(database, orv::ScopeGuard()); });
    PsetData::getObjectFromGuidCallbackSet([trace = traced("object")](const orv::Guid&) { return nullptr; });
    PsetData(false).setValue(orv::Guid(), "Pset_WallCommon", "FireRating", "F90");
    Factory::registerClass(std::make_unique<Mark>("kind"));
    EnhancementsFile::setFilePath(store);
    Enhancements::addEnhancement(std::make_unique<Mark>("record"));
    tell(std::to_string(Enhancements::getOrCreateEnhancementsDb()->getRecords().size()).c_str());
}
