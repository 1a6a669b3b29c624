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

const Spelling spellings[] = {
    {"000G8310K61mW92WiC3GuF",
     "00010203-0405-0607-0809-0a0b0c0d0e0f",
     {0x10203, 0x405, 0x607, {8, 9, 10, 11, 12, 13, 14, 15}}},
    {"1xS3BCk291UvhgP2dvNMKI",
     "7b7032cc-b822-417b-9aea-6429f95d6512",
     {0x7b7032cc, 0xb822, 0x417b, {0x9a, 0xea, 0x64, 0x29, 0xf9, 0x5d, 0x65, 0x12}}},
    {"3$$$$$$$$$$$$$$$$$$$$$",
     "ffffffff-ffff-ffff-ffff-ffffffffffff",
     {0xffffffff, 0xffff, 0xffff, {255, 255, 255, 255, 255, 255, 255, 255}}},
};

TEST(Guid, readsAndWritesBothSpellings) {
    for (const auto& [globalId, uuid, id] : spellings) {
        EXPECT_EQ(id.toString(false), globalId);
        EXPECT_EQ(id.toString(true), uuid);
        for (const std::string& spelling : {globalId, uuid}) {
            Guid parsed{1, 2, 3, {}};
            EXPECT_TRUE(parsed.boSet(spelling));
            EXPECT_EQ(parsed, id) << spelling;
        }
    }
    Guid upperCase;
    EXPECT_TRUE(upperCase.boSet("7B7032CC-B822-417B-9AEA-6429F95D6512"));
    EXPECT_EQ(upperCase, spellings[1].id);
}

TEST(Guid, staysAsItWasWhenATextIsRefused) {
    const auto& [globalId, uuid, id] = spellings[1];
    std::vector<std::string> refused = {"",         globalId + ' ',   globalId.substr(1),
                                        uuid + '0', "{" + uuid + "}", "4xS3BCk291UvhgP2dvNMKI"};
    for (const std::string& spelling : {globalId, uuid}) {
        for (std::size_t position = 0; position < spelling.size(); ++position) {
            for (const char wrong : {' ', '\0', '\xff', spelling[position] == '-' ? '0' : '-'}) {
                refused.push_back(std::string(spelling).replace(position, 1, 1, wrong));
            }
        }
    }
    for (const std::string& text : refused) {
        Guid kept = id;
        EXPECT_FALSE(kept.boSet(text)) << text;
        EXPECT_EQ(kept, id) << text;
    }
}

TEST(Guid, bringsBackIdsThatDifferInOneBitAndHashesThemFarApart) {
    const Guid& id = spellings[1].id;
    for (unsigned bit = 0; bit < 128; ++bit) {
        auto bytes = std::bit_cast<std::array<std::uint8_t, 16>>(id);
        bytes[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        const Guid other = std::bit_cast<Guid>(bytes);
        EXPECT_GT(std::popcount(other.hash() ^ id.hash()), 8) << bit;
        for (const bool asUuid : {false, true}) {
            Guid read;
            EXPECT_TRUE(read.boSet(other.toString(asUuid)) && read == other) << bit;
        }
    }
}

} // namespace
} // namespace orv
