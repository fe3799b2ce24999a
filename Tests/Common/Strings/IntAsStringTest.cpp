#include "Vl/Common/Strings/IntAsString.h"

#include <gmock/gmock.h>

#include <climits>
#include <cstdlib>
#include <string>

namespace {

using Valen::IntAsString;

constexpr int kInteresting[] = {0,     1,      -1,         7,       8,           9,      10,
                                -10,   15,     16,         99,      255,         -255,   4096,
                                65535, -65536, 1000000000, INT_MAX, INT_MIN + 1, INT_MIN};

TEST(IntAsStringTest, IsTheDecimalText) {
    for (const int value : kInteresting) {
        EXPECT_EQ(IntAsString(value).c_str(), std::to_string(value));
    }
}

TEST(IntAsStringTest, NegativeNumbersHaveASignInEveryBase) {
    EXPECT_EQ(IntAsString::itoa(-255, 16), "-ff");
    EXPECT_EQ(IntAsString::itoa(-5, 2), "-101");
    EXPECT_EQ(IntAsString::itoa(-8, 8), "-10");
}

TEST(IntAsStringTest, ZeroIsOneDigit) {
    EXPECT_EQ(IntAsString::itoa(0, 2), "0");
    EXPECT_EQ(IntAsString::itoa(0, 16), "0");
}

TEST(IntAsStringTest, TheSmallestIntegerIsWrittenInFull) {
    EXPECT_STREQ(IntAsString(INT_MIN).c_str(), "-2147483648");
    EXPECT_EQ(IntAsString::itoa(INT_MIN, 16), "-80000000");
    EXPECT_EQ(IntAsString::itoa(INT_MIN, 2), "-1" + std::string(31, '0'));
}

TEST(IntAsStringTest, DigitsReadBackAsTheNumberInEveryBase) {
    for (int base = 2; base <= 16; ++base) {
        for (const int value : kInteresting) {
            const std::string text = IntAsString::itoa(value, base);
            EXPECT_EQ(std::strtol(text.c_str(), nullptr, base), value) << text << " base " << base;
            EXPECT_EQ(text.find_first_not_of("-0123456789abcdef"), std::string::npos) << text;
        }
    }
}

TEST(IntAsStringTest, OtherBasesGiveAnEmptyText) {
    for (const int base : {INT_MIN, -2, 0, 1, 17, 36, INT_MAX}) {
        EXPECT_EQ(IntAsString::itoa(5, base), "") << base;
    }
}

}  // namespace
