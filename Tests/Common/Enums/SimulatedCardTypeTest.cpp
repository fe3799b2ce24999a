#include "Vl/Common/Enums/SimulatedCardType.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstring>

#include "Vl/Common/Enums/CardType.h"

namespace {

using Enums::SimulatedCardType;

constexpr std::array<unsigned, 26> kMajorIds = {
    0x0,        0x8300505,  0x8300605,  0x9300805,  0x9310805,  0x9301005,  0x9301805,
    0x80,       0x92000113, 0x92000215, 0x92100113, 0x92100215, 0x92000608, 0x92001610,
    0xb0000107, 0x10313405, 0x10303405, 0x10323405, 0x11303803, 0xa0000a07, 0xff,
    0x8304505,  0x95200104, 0x9300705,  0x92002606, 0xa1000104};

SimulatedCardType::Type card(int number) {
    return static_cast<SimulatedCardType::Type>(number);
}

TEST(SimulatedCardTypeTest, EachCardReportsItsMajorIdentifier) {
    int number = 0;
    for (const unsigned majorId : kMajorIds) {
        EXPECT_EQ(majorId, SimulatedCardType::GetMajorForType(card(number)));
        EXPECT_EQ(number, SimulatedCardType::GetTypeForMajorID(majorId));
        ++number;
    }
}

TEST(SimulatedCardTypeTest, TheCountAndNumbersOutsideReportZero) {
    for (const int number : {INT_MIN, -1, 26, 27, INT_MAX}) {
        EXPECT_EQ(0U, SimulatedCardType::GetMajorForType(card(number))) << number;
    }
}

TEST(SimulatedCardTypeTest, IdentifierZeroIsTheFirstCard) {
    EXPECT_EQ(0, SimulatedCardType::GetTypeForMajorID(0));
}

TEST(SimulatedCardTypeTest, AnIdentifierOfNoCardGivesTheFirst) {
    for (const unsigned majorId : {1U, 0x8300504U, 0x83005050U, 0xFFFFFFFFU}) {
        EXPECT_EQ(0, SimulatedCardType::GetTypeForMajorID(majorId)) << majorId;
    }
}

TEST(SimulatedCardTypeTest, ANameBeginsWithTheCardTypeThatTheIdentifierHolds) {
    int number = 0;
    for (const unsigned majorId : kMajorIds) {
        const unsigned type = majorId < 256 ? majorId : majorId >> 24;
        EXPECT_THAT(SimulatedCardType::GetText(card(number)),
                    testing::StartsWith(GetText(static_cast<Enums::CardType::Type>(type))));
        ++number;
    }
}

TEST(SimulatedCardTypeTest, AnObjectHoldsTheWholeTable) {
    EXPECT_EQ(26 * sizeof(unsigned), sizeof(SimulatedCardType));
    const SimulatedCardType cards;
    EXPECT_EQ(0, std::memcmp(&cards, kMajorIds.data(), sizeof kMajorIds));
}

TEST(SimulatedCardTypeTest, TheCountIsNoCard) {
    EXPECT_EQ(26, SimulatedCardType::Size());
    EXPECT_TRUE(SimulatedCardType::IsValidNum(25));
    EXPECT_FALSE(SimulatedCardType::IsValidNum(26));
    EXPECT_STREQ("unknown", SimulatedCardType::GetText(card(26)));
}

}  // namespace
