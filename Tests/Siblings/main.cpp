// A host whose OrvAssert and OrvUtilities are those in Application.

#include "Assert/Assert.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "Object/PropertyValue.h"
#include "Utilities/LockedFile.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

using namespace orv::domain::shared::enhancementsforreferencemodel;

namespace {

struct Mark : EnhancementBase {
    std::string getEntityName() const override { return "Mark"; }
    std::vector<std::pair<std::string, orv::object::PropertyValue>> getAttributes() const override { return {}; }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<Mark>(); }
};

constexpr std::string_view expected = R"(<?xml version="1.0" encoding="UTF-8"?>
<Enhancements>
  <Mark>
    <OwnerId>0000000000000000000000</OwnerId>
  </Mark>
  <Other/>
  <Mark>
    <OwnerId>1xS3BCk291UvhgP2dvNMKI</OwnerId>
  </Mark>
</Enhancements>
Could not set callback for PsetData
Property value doesn't hold the given type.
)";

} // namespace

int main() {
    auto& documents = orv::utilities::LockedFile::documents;
    documents["marks.xml"] = "<Enhancements><Mark/><Other/></Enhancements>";
    Factory::registerClass(std::make_unique<Mark>());
    EnhancementsFile::setFilePath("marks.xml");
    auto mark = std::make_unique<Mark>();
    mark->ownerId.boSet("1xS3BCk291UvhgP2dvNMKI");
    Enhancements::addEnhancement(std::move(mark));
    const PsetData withoutDatabase;
    orv::object::PropertyValue(true).get<int>();

    std::string found = documents["marks.xml"];
    for (const std::string& message : orv::assert::Assert::messages) {
        found += message + '\n';
    }
    if (found != expected) {
        std::cerr << "Not as expected:\n" << found;
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
