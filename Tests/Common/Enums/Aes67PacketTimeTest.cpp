#include "Vl/Common/Enums/Aes67PacketTime.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// Written down once more, so that a slip in the table shows.
const std::map<int, std::string> kTexts = {{0, "125us"}, {1, "250us"},   {2, "333us"}, {3, "500us"},
                                           {4, "1ms"},   {5, "1.333ms"}, {6, "4ms"}};

using Enums::Aes67PacketTime::Type;

TEST(Aes67PacketTimeTest, TextsLeadToValuesAndBack) {
    expectExactly(ENUMERATION(Aes67PacketTime), kTexts);
}

TEST(Aes67PacketTimeTest, NumbersWithoutATextReadUnknown) {
    expectOthersUnknown(ENUMERATION(Aes67PacketTime), kTexts);
}

TEST(Aes67PacketTimeTest, EachHasItsRateAndItsTime) {
    struct Row {
        int value;
        int packetsPerSec;
        int packetTimeUs;
    };
    for (const Row& row : {Row{0, 8000, 125}, Row{1, 4000, 250}, Row{2, 3000, 333}, Row{3, 2000, 500},
                           Row{4, 1000, 1000}, Row{5, 750, 1333}, Row{6, 250, 4000}}) {
        EXPECT_EQ(row.packetsPerSec, getPacketsPerSec(static_cast<Type>(row.value)));
        EXPECT_EQ(row.packetTimeUs, getPacketTimeUs(static_cast<Type>(row.value)));
    }
}

TEST(Aes67PacketTimeTest, OutOfRangeTheRateIsMinusOneAndTheTimeMinusAMillionOnPurpose) {
    for (const int number : {INT_MIN, -1, 7, 8, INT_MAX}) {
        EXPECT_EQ(-1, getPacketsPerSec(static_cast<Type>(number))) << number;
        EXPECT_EQ(-1000000, getPacketTimeUs(static_cast<Type>(number))) << number;
    }
}

TEST(Aes67PacketTimeTest, ThereAreSeven) {
    EXPECT_EQ(7, Enums::Aes67PacketTime::Size());
}

}  // namespace
