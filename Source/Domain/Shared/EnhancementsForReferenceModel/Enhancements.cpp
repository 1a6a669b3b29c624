#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"

namespace orv::domain::shared::enhancementsforreferencemodel {

std::shared_ptr<Enhancements> Enhancements::singleton;

std::shared_ptr<Enhancements> Enhancements::getOrCreateEnhancementsDb() {
    if (!singleton) {
        // Stored before the file is read: each record read comes back here through addEnhancement.
        singleton = std::make_shared<Enhancements>();
        EnhancementsFile::readFile();
    }
    return singleton;
}

void Enhancements::addEnhancement(std::unique_ptr<EnhancementBase>&& record) {
    const std::shared_ptr<Enhancements> enhancementsDb = getOrCreateEnhancementsDb();
    EnhancementsFile file(*enhancementsDb);
    if (file.lockFile()) {
        enhancementsDb->records.push_back(std::move(record));
        enhancementsDb->carried.noteAddition(enhancementsDb->records.back().get());
    }
}

void Enhancements::resetDb() {
    records.clear();
    carried.moveToFront();
}

} // namespace orv::domain::shared::enhancementsforreferencemodel
