#include "Tools/boardsim/Models/TextAttribute.h"

#include <gtest/gtest.h>

namespace {

using boardsim::readNumber;

TEST(TextAttributeTest, NumbersAreDecimalOrHexadecimalWithOneLineEndAtMost) {
    struct Number {
        const char* text;
        long expected;
    };
    for (const Number& number : {Number{"0", 0}, Number{"1\n", 1}, Number{"-1", -1}, Number{"+7\n", 7},
                                 Number{"0x1F", 31}, Number{"4294967295", 4294967295}}) {
        long value = 99;
        EXPECT_TRUE(readNumber(number.text, value)) << number.text;
        EXPECT_EQ(number.expected, value) << number.text;
    }
}

TEST(TextAttributeTest, OtherTextIsNoNumberAndLeavesItAsItIs) {
    for (const char* text : {"", "\n", "-", "0x", "1 ", " 1", "1\n\n", "--1", "one", "4294967296"}) {
        long value = 99;
        EXPECT_FALSE(readNumber(text, value)) << text;
        EXPECT_EQ(99, value) << text;
    }
}

}  // namespace
