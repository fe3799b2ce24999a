#include "Vl/Common/Enums/AlarmPriority.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// Written down once more, so that a slip in the table shows.
const std::map<int, std::string> kTexts = {{1, "Error"}, {2, "Warning"}, {3, "Info"}};

const char* textOf(int number) {
    return GetText(static_cast<Enums::AlarmPriority::AlarmPriority_T>(number));
}

TEST(AlarmPriorityTest, TextsLeadToValuesAndBack) {
    expectExactly(ENUMERATION(AlarmPriority), kTexts);
}

TEST(AlarmPriorityTest, AnyOtherNumberIsUnknownWithTheNumber) {
    EXPECT_STREQ("unknown (0)", textOf(0));
    EXPECT_STREQ("unknown (4)", textOf(4));
    EXPECT_STREQ("unknown (-1)", textOf(-1));
    EXPECT_STREQ("unknown (-2147483648)", textOf(INT_MIN));
    EXPECT_STREQ("unknown (2147483647)", textOf(INT_MAX));
}

TEST(AlarmPriorityTest, TheNextUnknownOverwritesTheTextOnPurpose) {
    const char* const first = textOf(4);
    EXPECT_EQ(first, textOf(5));
    EXPECT_STREQ("unknown (5)", first);
}

TEST(AlarmPriorityTest, TextsOfUnknownNumbersAreNoPriorities) {
    EXPECT_EQ(-1, Enums::AlarmPriority::GetType("unknown (4)"));
    EXPECT_EQ(-1, Enums::AlarmPriority::GetType("error"));
}

TEST(AlarmPriorityTest, SizeIsOnePastTheLast) {
    EXPECT_EQ(4, Enums::AlarmPriority::Size());
}

}  // namespace
