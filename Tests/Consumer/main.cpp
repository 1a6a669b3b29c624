#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include <iostream>
using namespace orv::domain::shared::enhancementsforreferencemodel;

struct Mark : EnhancementBase { // a kind of record; attributes of its own would go through get- and setAttributes
    std::string getEntityName() const override { return "Mark"; }
    std::vector<std::pair<std::string, orv::object::PropertyValue>> getAttributes() const override { return {}; }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<Mark>(); }
};
int main() {
    Factory::registerClass(std::make_unique<Mark>());
    EnhancementsFile::setFilePath("marks.xml");
    std::unique_ptr<EnhancementBase> mark = std::make_unique<Mark>();
    mark->ownerId.boSet("1xS3BCk291UvhgP2dvNMKI"); // an object of the model, by its GlobalId
    Enhancements::addEnhancement(std::move(mark)); // loads the file first, then adds and writes
    if (mark) std::cerr << "marks.xml is locked or can't be written\n"; // it stayed with us
    std::cout << Enhancements::getOrCreateEnhancementsDb()->getRecords().size() << " marks\n";
}
