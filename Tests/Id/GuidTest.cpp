#include "Id/Guid.h"

#include <gtest/gtest.h>

#include <bit>

namespace orv {
namespace {

struct Spelling {
    std::string globalId;
    std::string uuid;
    Guid id;
};

// clang-format off
const Spelling spellings[] = {
    {"0000000000000000000000", "00000000-0000-0000-0000-000000000000", {}},
    {"000G8310K61mW92WiC3GuF", "00010203-0405-0607-0809-0a0b0c0d0e0f", {0x10203, 0x405, 0x607, {8, 9, 10, 11, 12, 13, 14, 15}}},
    {"1xS3BCk291UvhgP2dvNMKI", "7b7032cc-b822-417b-9aea-6429f95d6512", {0x7b7032cc, 0xb822, 0x417b, {0x9a, 0xea, 0x64, 0x29, 0xf9, 0x5d, 0x65, 0x12}}},
    {"2O2Fr$t4X7Zf8NOew3FNld", "9808fd7f-dc48-478e-9217-628e833d7be7", {0x9808fd7f, 0xdc48, 0x478e, {0x92, 0x17, 0x62, 0x8e, 0x83, 0x3d, 0x7b, 0xe7}}},
    {"3$$$$$$$$$$$$$$$$$$$$$", "ffffffff-ffff-ffff-ffff-ffffffffffff", {0xffffffff, 0xffff, 0xffff, {255, 255, 255, 255, 255, 255, 255, 255}}},
};
// clang-format on

TEST(Guid, readsAndWritesBothSpellings) {
    for (const auto& [globalId, uuid, id] : spellings) {
        Guid parsed{1, 2, 3, {}};
        EXPECT_TRUE(parsed.boSet(globalId));
        EXPECT_EQ(parsed, id) << globalId;
        EXPECT_EQ(parsed.toString(false), globalId);
        EXPECT_EQ(parsed.toString(true), uuid);
        parsed = {1, 2, 3, {}};
        EXPECT_TRUE(parsed.boSet(uuid));
        EXPECT_EQ(parsed, id) << uuid;
    }
    Guid upperCase;
    EXPECT_TRUE(upperCase.boSet("7B7032CC-B822-417B-9AEA-6429F95D6512"));
    EXPECT_EQ(upperCase, spellings[2].id);
}

TEST(Guid, staysAsItWasWhenATextIsRefused) {
    const std::string uuid = spellings[2].uuid;
    const std::string globalId = spellings[2].globalId;
    std::vector<std::string> refused = {"",
                                        " ",
                                        globalId + ' ',
                                        globalId.substr(1),
                                        uuid + '0',
                                        "{" + uuid + "}",
                                        "7b7032cc0b822-417b-9aea-6429f95d6512",
                                        "4xS3BCk291UvhgP2dvNMKI"};
    for (std::size_t position = 0; position < globalId.size(); ++position) {
        for (const char wrong : {'-', ' ', '\0', '\xff'}) {
            refused.push_back(std::string(globalId).replace(position, 1, 1, wrong));
        }
    }
    for (std::size_t position = 0; position < uuid.size(); ++position) {
        refused.push_back(std::string(uuid).replace(position, 1, 1, 'g'));
    }
    for (const std::string& text : refused) {
        Guid id = spellings[1].id;
        EXPECT_FALSE(id.boSet(text)) << text;
        EXPECT_EQ(id, spellings[1].id) << text;
    }
}

TEST(Guid, hashesIdsThatDifferInOneBitFarApart) {
    for (unsigned bit = 0; bit < 64; ++bit) {
        Guid high = spellings[2].id;
        Guid low = high;
        high.data1 ^= 1U << bit % 32;
        low.data4[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        EXPECT_GT(std::popcount(high.hash() ^ spellings[2].id.hash()), 8) << bit;
        EXPECT_GT(std::popcount(low.hash() ^ spellings[2].id.hash()), 8) << bit;
    }
}

} // namespace
} // namespace orv
