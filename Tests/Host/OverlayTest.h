#pragma once

#include "Host/Overlay.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Support/OverlayReading.h"
#include "Support/StoreTest.h"

#include <sstream>

namespace orv::host::overlaytest {

using domain::shared::enhancementsforreferencemodel::PsetData;
using fc::core::kernel::FcObjectDefinition;
using object::PropertyValue;
using tests::Enhancements;
using tests::readingOf;
using Values = std::vector<PropertyValue>;
using Rows = std::vector<std::pair<PropertyValue, PropertyValue>>;

/// A model of a wall and a door, and an overlay of it.
class OverlayTest : public tests::StoreTest {
protected:
    OverlayTest() {
        masters->entityCreate("IfcWall")->guid = wall;
        masters->entityCreate("IfcDoor")->guid = door;
        masters->entityCreate("IfcRelAggregates")->guid = relation;
        PsetData::getObjectFromGuidCallbackSet(findInModel);
        forgetShadows();
        std::istringstream own(R"(<PropertySetDef><Name>Own</Name><PropertyDefs>
<PropertyDef><Name>Table</Name><PropertyType><TypePropertyTableValue><DefiningValue><DataType type="IfcInteger"/></DefiningValue>
<DefinedValue><DataType type="IfcLabel"/></DefinedValue></TypePropertyTableValue></PropertyType></PropertyDef>
<PropertyDef><Name>Range A</Name><PropertyType><TypePropertyBoundedValue><DataType type="IfcLabel"/>
</TypePropertyBoundedValue></PropertyType></PropertyDef>
<PropertyDef><Name>Range B</Name><PropertyType><TypePropertyReferenceValue/></PropertyType></PropertyDef>
</PropertyDefs></PropertySetDef>)");
        EXPECT_EQ(ifc::addDefinitions(own).reason, "");
    }

    /// As at the start of a program.
    void forgetShadows() {
        shadows = std::make_shared<fc::FcShadowDb>();
        PsetData::getPsetShadowDbReadOnlyCallbackSet([this] { return shadows; });
        PsetData::getPsetShadowDbReadWriteCallbackSet([this] { return std::pair(shadows, ScopeGuard()); });
    }

    /// The edits in the file, without author and time.
    std::vector<std::string> storedLines() const {
        std::vector<std::string> lines;
        std::istringstream content(tests::contentOf(path));
        for (std::string line; std::getline(content, line);) {
            if (line.find("<Edit>") != std::string::npos) {
                lines.push_back(line.substr(10, line.find(" by ") - 10));
            }
        }
        return lines;
    }

    static void addEdits(const Guid& id, std::vector<std::string> lines) {
        auto record = std::make_unique<PropertyEdits>();
        record->ownerId = id;
        record->lines = std::move(lines);
        std::unique_ptr<tests::EnhancementBase> added = std::move(record);
        Enhancements::addEnhancement(std::move(added));
    }

    const Guid wall{1, 0, 0, {}};
    const Guid door{2, 0, 0, {}};
    const Guid nothing{3, 0, 0, {}};
    const Guid relation{4, 0, 0, {}};
    std::shared_ptr<fc::Data> masters = std::make_shared<fc::Data>();
    std::shared_ptr<fc::FcShadowDb> shadows;
    const Overlay::FindObject findInModel = [this](const Guid& id) {
        return std::dynamic_pointer_cast<const FcObjectDefinition>(masters->findByGuid(id));
    };
    Overlay overlay{findInModel, "Anna"};
};

} // namespace orv::host::overlaytest
