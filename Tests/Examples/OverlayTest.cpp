#include "Annotate/Overlay.h"

#include "Annotate/Store.h"
#include "FoundationClasses/IfcClass.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace annotate {
namespace {

using orv::fc::IfcClass;

/// A property of a wall, a door, a space or a building, with a value for it; empty for another object.
std::pair<std::string, std::string> propertyOf(const ModelObject& object) {
    const std::pair<const char*, const char*> sets[] = {{"IfcWall", "Pset_WallCommon"},
                                                        {"IfcDoor", "Pset_DoorCommon"},
                                                        {"IfcSpace", "Pset_SpaceCommon"},
                                                        {"IfcBuilding", "Pset_BuildingCommon"}};
    for (const auto& [ifcClass, set] : sets) {
        if (IfcClass::find(ifcClass)->includes(*object.ifcClass)) {
            return {set, "of " + object.globalId};
        }
    }
    return {};
}

orv::Guid idOf(const ModelObject& object) {
    orv::Guid id;
    EXPECT_TRUE(id.boSet(object.globalId));
    return id;
}

void setOnAll(const Model& model, const std::filesystem::path& path) {
    Store store(path);
    const Overlay overlay(model, {});
    for (const ModelObject& object : model.getObjects()) {
        if (const auto [set, value] = propertyOf(object); !set.empty()) {
            auto edit = std::make_unique<PropertyEdit>();
            edit->ownerId = idOf(object);
            edit->propertySet = set;
            edit->property = "Reference";
            edit->values = {value};
            store.add(std::move(edit));
        }
    }
}

class OverlayTest : public ::testing::TestWithParam<std::string> {};

TEST_P(OverlayTest, bringsBackAValueOnEveryWallDoorSpaceAndTheBuildingAfterARestart) {
    if (!std::filesystem::exists(GetParam())) {
        GTEST_SKIP() << GetParam() << " isn't there";
    }
    const orv::tests::TemporaryDirectory directory;
    const std::string content = orv::tests::contentOf(GetParam());
    const Model model = Model::read(GetParam());
    const pid_t child = ::fork();
    if (child == 0) {
        setOnAll(model, directory / "store.xml");
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);

    const Store store(directory / "store.xml");
    const Overlay overlay(model, store.getAll<PropertyEdit>());
    int count = 0;
    for (const ModelObject& object : model.getObjects()) {
        if (const auto [set, value] = propertyOf(object); !set.empty()) {
            const auto held = Overlay::read(idOf(object), set, "Reference");
            ASSERT_EQ(held.size(), 1U) << object.globalId;
            EXPECT_EQ(held.front().get<std::string>(), value);
            const auto master = std::dynamic_pointer_cast<orv::fc::core::kernel::FcObjectDefinition>(
                overlay.getMasters().findByGuid(idOf(object)));
            ASSERT_NE(master, nullptr);
            EXPECT_EQ(master->className(), object.ifcClass->present().name);
            EXPECT_TRUE(master->propertySetDefinitions.empty());
            ++count;
        }
    }
    EXPECT_GT(count, 10);
    EXPECT_TRUE(orv::tests::contentOf(GetParam()) == content);
}

INSTANTIATE_TEST_SUITE_P(Models, OverlayTest,
                         ::testing::Values(HOUSE, REAL_MODELS "/SampleHouse.ifc",
                                           REAL_MODELS "/Duplex_Architecture.ifc"));

} // namespace
} // namespace annotate
