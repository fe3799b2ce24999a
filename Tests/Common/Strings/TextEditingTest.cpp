#include "Vl/Common/Strings/TextEditing.h"

#include <gmock/gmock.h>

namespace {

TEST(TextEditingTest, ToLowerChangesInPlace) {
    std::string text = "Panel-0 ABCXYZ";
    Valen::ToLower(text);
    EXPECT_EQ(text, "panel-0 abcxyz");
}

TEST(TextEditingTest, ToLowerMakesALowerCopy) {
    EXPECT_EQ(Valen::ToLower("Panel-0 ABCXYZ"), "panel-0 abcxyz");
    EXPECT_EQ(Valen::ToLower(""), "");
}

TEST(TextEditingTest, ToLowerLeavesEightBitCharactersOfTheCLocale) {
    EXPECT_EQ(Valen::ToLower("\xC4\xFF[@"), "\xC4\xFF[@");
}

struct Trim {
    const char* text;
    const char* trimmed;
};

class TrimWhiteSpacesTest : public testing::TestWithParam<Trim> {};

TEST_P(TrimWhiteSpacesTest, RemovesWhiteSpaceAtBothEnds) {
    std::string text = GetParam().text;
    Valen::TrimWhiteSpaces(text);
    EXPECT_EQ(text, GetParam().trimmed);
}

INSTANTIATE_TEST_SUITE_P(Texts, TrimWhiteSpacesTest,
                         testing::Values(Trim{" \t\n\v\f\ra b \r\n", "a b"},  //
                                         Trim{"ab", "ab"},                    //
                                         Trim{" ab", "ab"},                   //
                                         Trim{"ab ", "ab"},                   //
                                         Trim{" \t\r\n ", ""},                //
                                         Trim{"", ""},                        //
                                         Trim{"\xA0x\xE4", "\xA0x\xE4"}));

struct Replace {
    const char* text;
    const char* from;
    const char* to;
    const char* replaced;
};

class ReplaceAllSubstringsTest : public testing::TestWithParam<Replace> {};

TEST_P(ReplaceAllSubstringsTest, GoesOnBehindEachReplacement) {
    const Replace& row = GetParam();
    std::string text = row.text;
    Valen::ReplaceAllSubstrings(text, row.from, row.to);
    EXPECT_EQ(text, row.replaced);
}

INSTANTIATE_TEST_SUITE_P(Texts, ReplaceAllSubstringsTest,
                         testing::Values(Replace{"a,b,c", ",", ", ", "a, b, c"},  //
                                         Replace{"aaa", "aa", "b", "ba"},         //
                                         Replace{"aa", "a", "aa", "aaaa"},        //
                                         Replace{"abab", "ab", "", ""},           //
                                         Replace{"xabx", "ab", "-", "x-x"},       //
                                         Replace{"abc", "d", "e", "abc"},         //
                                         Replace{"", "a", "b", ""},               //
                                         Replace{"abc", "", "x", "abc"}));

TEST(TextEditingTest, ATextCanBeReplacedByItself) {
    std::string text = "ab";
    Valen::ReplaceAllSubstrings(text, text, "cd");
    EXPECT_EQ(text, "cd");
    Valen::ReplaceAllSubstrings(text, "c", text);
    EXPECT_EQ(text, "cdd");
}

TEST(TextEditingTest, StrRevReversesFromFirstToLast) {
    char text[] = "(abc)";
    Valen::str_rev(text + 1, text + 3);
    EXPECT_STREQ(text, "(cba)");
    Valen::str_rev(text, text + 4);
    EXPECT_STREQ(text, ")abc(");
    Valen::str_rev(text + 1, text + 2);
    EXPECT_STREQ(text, ")bac(");
}

TEST(TextEditingTest, StrRevOfOneOrNoCharacterChangesNothing) {
    char text[] = "abc";
    Valen::str_rev(text + 1, text + 1);
    Valen::str_rev(text + 1, text);
    EXPECT_STREQ(text, "abc");
}

}  // namespace
