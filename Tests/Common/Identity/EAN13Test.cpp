#include "Vl/Common/Identity/EAN13.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using Valen::EAN13::calculateChecksum;

int checkDigitOf(unsigned long number) {
    int digit = -1;
    calculateChecksum(number, &digit);
    return digit;
}

/// The rule as it stands on paper: from the left, weights 1 and 3 alternate over the first twelve digits.
int digitOnPaper(const std::string& firstTwelve) {
    int sum = 0;
    for (std::size_t i = 0; i < firstTwelve.size(); ++i) {
        sum += (firstTwelve[i] - '0') * (i % 2 == 0 ? 1 : 3);
    }
    return (10 - sum % 10) % 10;
}

TEST(EAN13Test, NumbersFromTheShelfAreValid) {
    for (const unsigned long number :
         {4006381333931UL, 5901234123457UL, 9780201379624UL, 4003994155486UL, 9783161484100UL}) {
        EXPECT_TRUE(calculateChecksum(number)) << number;
        EXPECT_EQ(static_cast<int>(number % 10), checkDigitOf(number)) << number;
    }
}

TEST(EAN13Test, ZeroIsInvalidAlthoughItsDigitsAddUp) {
    EXPECT_FALSE(calculateChecksum(0));
    EXPECT_EQ(0, checkDigitOf(0));
}

TEST(EAN13Test, AWrongLastDigitGivesTheRightOne) {
    EXPECT_FALSE(calculateChecksum(4006381333930));
    EXPECT_EQ(1, checkDigitOf(4006381333930));
}

TEST(EAN13Test, EveryOtherLastDigitIsInvalidAndLeadsToTheSameCheckDigit) {
    for (unsigned long last = 0; last < 10; ++last) {
        EXPECT_EQ(last == 7, calculateChecksum(5901234123450 + last)) << last;
        EXPECT_EQ(7, checkDigitOf(5901234123450 + last)) << last;
    }
}

TEST(EAN13Test, AnyOneChangedDigitIsNoticed) {
    for (unsigned long place = 1; place <= 1'000'000'000'000; place *= 10) {
        for (unsigned long step = 1; step < 10; ++step) {
            const unsigned long digit = 4006381333931 / place % 10;
            const unsigned long changed = 4006381333931 - digit * place + (digit + step) % 10 * place;
            EXPECT_FALSE(calculateChecksum(changed)) << changed;
        }
    }
}

TEST(EAN13Test, TheCheckDigitIsTheOneComputedOnPaper) {
    std::mt19937_64 random(13);
    for (int i = 0; i < 1000; ++i) {
        const unsigned long firstTwelve = random() % 1'000'000'000'000;
        std::string digits = std::to_string(firstTwelve);
        digits.insert(0, 12 - digits.size(), '0');
        const int expected = digitOnPaper(digits);
        EXPECT_EQ(expected, checkDigitOf(firstTwelve * 10 + random() % 10)) << digits;
        EXPECT_TRUE(calculateChecksum(firstTwelve * 10 + static_cast<unsigned long>(expected)) ||
                    firstTwelve == 0);
    }
}

TEST(EAN13Test, AShorterNumberCountsAsFilledWithZerosInFront) {
    EXPECT_TRUE(calculateChecksum(96385074));  // an EAN-8
    EXPECT_TRUE(calculateChecksum(17));
    EXPECT_EQ(7, checkDigitOf(10));
}

TEST(EAN13Test, DigitsBeyondTheThirteenthTakeNoPartOnPurpose) {
    EXPECT_TRUE(calculateChecksum(14'006'381'333'931));
    EXPECT_TRUE(calculateChecksum(990'004'006'381'333'931));
    EXPECT_EQ(1, checkDigitOf(54'006'381'333'930));
}

TEST(EAN13Test, TheLargestNumberIsReadLikeAnyOther) {
    // An erased record: ...4073709551615
    EXPECT_FALSE(calculateChecksum(0xFFFFFFFFFFFFFFFF));
    EXPECT_EQ(2, checkDigitOf(0xFFFFFFFFFFFFFFFF));
}

}  // namespace
