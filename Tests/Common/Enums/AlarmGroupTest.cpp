#include "Vl/Common/Enums/AlarmGroup.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// Written down once more, so that a slip in the table shows.
const std::map<int, std::string> kTexts = {
    {1, "System"}, {2, "Connections"}, {3, "Topology"}, {4, "Warnings"}};

const char* textOf(int number) {
    return GetText(static_cast<Enums::AlarmGroup::AlarmGroup_T>(number));
}

TEST(AlarmGroupTest, TextsLeadToValuesAndBack) {
    expectExactly(ENUMERATION(AlarmGroup), kTexts);
}

TEST(AlarmGroupTest, AnyOtherNumberIsInformationOnPurpose) {
    for (const int number : {INT_MIN, -1, 0, 5, 6, 1000, INT_MAX}) {
        EXPECT_STREQ("Information", textOf(number)) << number;
    }
}

TEST(AlarmGroupTest, InformationIsNoGroup) {
    EXPECT_EQ(-1, Enums::AlarmGroup::GetType("Information"));
}

TEST(AlarmGroupTest, SizeIsOnePastTheLast) {
    EXPECT_EQ(5, Enums::AlarmGroup::Size());
}

}  // namespace
