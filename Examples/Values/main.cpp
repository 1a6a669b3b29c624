// Sets properties of the objects of a model, keeps them in a file, and shows them. Started again, it has them back.

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "FoundationClasses/FcShadowDb.h"
#include "Host/Overlay.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <fstream>
#include <iostream>

using namespace orv;
using domain::shared::enhancementsforreferencemodel::Enhancements;
using domain::shared::enhancementsforreferencemodel::EnhancementsFile;
using domain::shared::enhancementsforreferencemodel::PsetData;
using fc::core::kernel::FcObjectDefinition;

namespace {

const Guid wall{1, 0, 0, {}};
const Guid door{2, 0, 0, {}};

/// The reference model, which an application has from elsewhere: a wall and a door.
std::shared_ptr<fc::Data> makeModel() {
    auto model = std::make_shared<fc::Data>();
    model->entityCreate("IfcWall")->guid = wall;
    model->entityCreate("IfcDoor")->guid = door;
    return model;
}

/// Tells the library where the values live while the program runs, and how it finds the objects of the model.
host::Overlay::FindObject connect(const std::shared_ptr<fc::Data>& model) {
    auto shadows = std::make_shared<fc::FcShadowDb>();
    const auto findObject = [model](const Guid& id) {
        return std::dynamic_pointer_cast<const FcObjectDefinition>(model->findByGuid(id));
    };
    PsetData::getPsetShadowDbReadOnlyCallbackSet([shadows] { return shadows; });
    PsetData::getPsetShadowDbReadWriteCallbackSet([shadows] { return std::pair(shadows, ScopeGuard()); });
    PsetData::getObjectFromGuidCallbackSet(findObject);
    return findObject;
}

/// Takes the office's own property sets.
bool addOfficeDefinitions(const char* path) {
    std::ifstream file(path);
    const ifc::AddedDefinitions added = ifc::addDefinitions(file, path);
    if (!added.reason.empty()) {
        std::cerr << path << ", line " << added.line << ": " << added.reason << '\n';
    }
    return added.reason.empty();
}

void show(const char* what, const host::Outcome& outcome) {
    using Result = host::Outcome::Result;
    std::cout << what << ": ";
    if (outcome) {
        std::cout << "done"
                  << (outcome.isOutsideEnumeration ? ", though it isn't one of the values to choose from" : "")
                  << (outcome.isOfOtherClass ? ", though the set is for other objects" : "") << '\n';
    } else if (outcome.result == Result::NoSuchSet || outcome.result == Result::NoSuchProperty) {
        std::cout << "no such name";
        for (const std::string_view name : outcome.nearestNames) {
            std::cout << ", perhaps " << name;
        }
        std::cout << '\n';
    } else if (outcome.result == Result::ValueRefused) {
        std::cout << "refused, it takes " << outcome.neededType << '\n';
    } else {
        std::cout << "not done\n";
    }
}

void show(const char* pset, const char* property, const Guid& id) {
    const object::PropertyValue value = PsetData().getValue(id, pset, property);
    const auto* const text = value.getIf<std::string>();
    const auto* const number = value.getIf<double>();
    std::cout << "  " << property << " = ";
    if (text != nullptr) {
        std::cout << *text << '\n';
    } else if (number != nullptr) {
        std::cout << *number << '\n';
    } else {
        std::cout << "(none)\n";
    }
}

void showValues() {
    show("Pset_WallCommon", "FireRating", wall);
    show("Pset_WallCommon", "ThermalTransmittance", wall);
    show("Office_FireSafety", "State", door);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "values DEFINITIONS STORE\n";
        return 1;
    }
    const auto model = makeModel();
    host::Overlay overlay(connect(model), "Anna");
    if (!addOfficeDefinitions(arguments[1])) {
        return 1;
    }
    EnhancementsFile::setFilePath(arguments[2]);
    if (!Enhancements::loadAtOnce()) {
        std::cerr << arguments[2] << " can't be read, or another program has it locked.\n";
        return 1;
    }
    for (const auto& [id, line, outcome] : overlay.restore()) {
        std::cout << "Not restored: " << line << '\n';
    }
    std::cout << "At the start:\n";
    showValues();

    show("Fire rating", overlay.set(wall, "Pset_WallCommon", "FireRating", "F90"));
    show("U value", overlay.set(wall, "Pset_WallCommon", "ThermalTransmittance", 0.25, "W/(m2.K)"));
    show("U value in words", overlay.set(wall, "Pset_WallCommon", "ThermalTransmittance", "low"));
    show("Name with a slip", overlay.set(wall, "Pset_WallCommon", "FireRatng", "F90"));
    show("Our own", overlay.set(door, "Office_FireSafety", "State", "to repair"));
    show("Our own, on a wall", overlay.set(wall, "Office_FireSafety", "State", "new"));
    show("Nothing any more", overlay.unset(wall, "Office_FireSafety", "State"));

    std::cout << "At the end:\n";
    showValues();
}
