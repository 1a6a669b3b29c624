#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"

#include "Support/SampleRecord.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using tests::SampleRecord;

TEST(Factory, makesRecordsOfTheRegisteredNamesAlone) {
    EXPECT_EQ(Factory::createEntityFromName("Sample"), nullptr);
    Factory::registerClass(std::make_unique<SampleRecord>("Sample"));
    Factory::registerClass(std::make_unique<tests::SealedRecord>());
    for (const char* name : {"", "sample", "Sample ", "Sampl", "Sealed"}) {
        EXPECT_EQ(Factory::createEntityFromName(name), nullptr) << name;
    }
    const auto record = Factory::createEntityFromName("Sample");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->getEntityName(), "Sample");
    EXPECT_EQ(record->ownerId, Guid());
    EXPECT_EQ(SampleRecord::destroyed, 0);
    Factory::registerClass(std::make_unique<SampleRecord>("Sample"));
    EXPECT_EQ(SampleRecord::destroyed, 1) << "the kind that it replaces";
}

/// Tells at its end whether records of another kind can be made.
class CuriousRecord : public SampleRecord {
public:
    CuriousRecord(std::string name, std::string otherKind)
        : SampleRecord(std::move(name)), other(std::move(otherKind)) {}
    CuriousRecord(const CuriousRecord&) = delete;
    CuriousRecord& operator=(const CuriousRecord&) = delete;
    ~CuriousRecord() override { std::cerr << kind << (Factory::createEntityFromName(other) ? " can;" : " can't;"); }

private:
    std::string other;
};

TEST(Factory, hasNoKindsForTheirDestructorsAtTheEndOfTheProcess) {
    Factory::registerClass(std::make_unique<CuriousRecord>("A", "B"));
    Factory::registerClass(std::make_unique<CuriousRecord>("B", "A"));
    EXPECT_EXIT(std::exit(0), testing::ExitedWithCode(0), "^B can't;A can't;$");
}

TEST(EnhancementBase, takesItsOwnerFromEveryPairOfExactlyThatName) {
    const std::string id = "1xS3BCk291UvhgP2dvNMKI";
    const std::string other = "2O2Fr$t4X7Zf8NOew3FNld";
    const std::pair<tests::StringAttributes, std::string> cases[] = {
        {{}, id},
        {{{"ownerid", other}, {"OwnerId2", other}, {"OwnerI", other}, {"Text", other}}, id},
        {{{"OwnerId", other}}, other},
        {{{"OwnerId", "3$$$$$$$$$$$$$$$$$$$$$"}, {"A", ""}, {"OwnerId", other}}, other},
        {{{"OwnerId", other}, {"OwnerId", "no id"}}, other},
    };
    for (const auto& [list, expected] : cases) {
        tests::SealedRecord record;
        record.ownerId.boSet(id);
        record.setAttributes(list);
        EXPECT_EQ(record.ownerId.toString(false), expected);
    }
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel
