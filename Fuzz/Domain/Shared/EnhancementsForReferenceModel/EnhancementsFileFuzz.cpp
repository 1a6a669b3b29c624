// The records of any document that is loaded are written again so that the next load finds the same, and the next write
// the same document.

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Require.h"
#include "Support/SampleRecord.h"
#include "Support/TemporaryDirectory.h"

#include <sstream>

using namespace orv;
using namespace orv::domain::shared::enhancementsforreferencemodel;

namespace {

/// The database with nothing but the records of the document, or null if it is refused.
std::shared_ptr<Enhancements> load(const std::string& document) {
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    *database = Enhancements();
    std::istringstream stream(document);
    return EnhancementsFile::read(stream) ? database : nullptr;
}

std::string written(const Enhancements& database) {
    std::ostringstream stream;
    fuzz::require(EnhancementsFile(database).write(stream), "the database can be written");
    return stream.str();
}

std::string shown(const Enhancements& database) {
    std::string text;
    for (const auto& record : database.getRecords()) {
        text += record->getEntityName() + ' ' + record->ownerId.toString(true);
        for (const auto& [name, value] : record->getAttributes()) {
            text += '\n' + name + '\0' + value.get<std::string>();
        }
        text += '\0';
    }
    return text;
}

} // namespace

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    static const tests::TemporaryDirectory directory;
    directory.empty(); // of the copies that were kept of earlier inputs
    Factory::registerClass(std::make_unique<tests::SampleRecord>("Note"));
    EnhancementsFile::setFilePath(directory / "enhancements.xml");
    if (const auto database = load(std::string(data, data + size))) {
        const std::string document = written(*database);
        const std::string records = shown(*database);
        fuzz::require(load(document) != nullptr, "what was written can be loaded");
        fuzz::require(shown(*database) == records, "the records come back");
        fuzz::require(written(*database) == document, "a document written twice is the same");
    }
    return 0;
}
