#include "Vl/Common/Identity/Version.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

namespace {

using Valen::Version;
using Words = std::array<std::uint32_t, 3>;

/// 17 May 2024 in the upper half of word 1.
constexpr std::uint32_t kDate = 24U << 25 | 5U << 21 | 17U << 16;
constexpr std::uint32_t kTwoNumbers = 1U << 31;
constexpr std::uint32_t kDirty = 1U << 30;

TEST(VersionTest, ANewVersionIsAllZero) {
    EXPECT_EQ((Words{0, 0, 0}), Version().words);
}

TEST(VersionTest, TheRecordIsThreeLittleEndianWords) {
    const unsigned char record[12] = {0x03, 0x02, 0x01, 0x80, 0x04, 0x00, 0xB1, 0x30, 0x02, 0x00, 0x01, 0x80};
    Version version;
    ASSERT_EQ(sizeof record, sizeof version);
    std::memcpy(&version, record, sizeof record);
    EXPECT_EQ((Words{0x80010203, 0x30B10004, 0x80010002}), version.words);
    EXPECT_EQ(0x80U, version.cardType());
    EXPECT_EQ(0x0102U, version.majorVersion());
    EXPECT_EQ(0x03U, version.minorVersion());
    EXPECT_EQ(4U, version.build());
    EXPECT_EQ(2024U, version.year());
    EXPECT_EQ(5U, version.month());
    EXPECT_EQ(17U, version.day());
    EXPECT_TRUE(version.hasFurtherNumbers());
    EXPECT_EQ(1U, version.firstFurtherNumber());
    EXPECT_EQ(2U, version.secondFurtherNumber());
}

TEST(VersionTest, FieldsEndWhereTheNextBegins) {
    const Version full{{0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF}};
    EXPECT_EQ(0xFFU, full.cardType());
    EXPECT_EQ(0xFFFFU, full.majorVersion());
    EXPECT_EQ(0xFFU, full.minorVersion());
    EXPECT_EQ(0xFFFFU, full.build());
    EXPECT_EQ(2127U, full.year());
    EXPECT_EQ(15U, full.month());
    EXPECT_EQ(31U, full.day());
    EXPECT_EQ(0xFFFU, full.firstFurtherNumber());
    EXPECT_EQ(0xFFFFU, full.secondFurtherNumber());
    EXPECT_EQ(0x3FFFFFFFU, full.revision());
}

TEST(VersionTest, LocalChangesBelongToARevision) {
    EXPECT_TRUE((Version{{1, 0, kDirty}}).hasLocalChanges());
    EXPECT_FALSE((Version{{1, 0, 5}}).hasLocalChanges());
    EXPECT_FALSE((Version{{1, 0, kTwoNumbers | kDirty}}).hasLocalChanges());
}

struct TextRow {
    Words words;
    const char* text;
};

class VersionTextTest : public testing::TestWithParam<TextRow> {};

TEST_P(VersionTextTest, HasItsFormByWord2) {
    EXPECT_STREQ(GetParam().text, Version{GetParam().words}.toString().c_str());
}

INSTANTIATE_TEST_SUITE_P(
    WithoutWord2, VersionTextTest,
    testing::Values(TextRow{{0, 0, 0}, "CT: 0x00 Ver: 0000.00.0000 (00/00/2000)"},
                    TextRow{{0x80010203, kDate | 4, 0}, "CT: 0x80 Ver: 0102.03.0004 (17/05/2024)"},
                    TextRow{{0x05ABCDEF, kDate | 0xBEEF, 0}, "CT: 0x05 Ver: ABCD.EF.BEEF (17/05/2024)"},
                    TextRow{{0, 0xFFFF0000, 0}, "CT: 0x00 Ver: 0000.00.0000 (31/15/2127)"}));
INSTANTIATE_TEST_SUITE_P(WithTwoFurtherNumbers, VersionTextTest,
                         testing::Values(TextRow{{0x80010203, kDate | 4, kTwoNumbers | 1U << 16 | 2},
                                                 "CT: 0x80 Ver: 0102.03.0004 [01.02] (17/05/2024)"},
                                         TextRow{{0x80010203, kDate | 4, kTwoNumbers},
                                                 "CT: 0x80 Ver: 0102.03.0004 [00.00] (17/05/2024)"},
                                         TextRow{{0x80010203, kDate | 4, 0xFFFFFFFF},
                                                 "CT: 0x80 Ver: 0102.03.0004 [4095.65535] (17/05/2024)"}));
INSTANTIATE_TEST_SUITE_P(WithARevision, VersionTextTest,
                         testing::Values(TextRow{{0x80010203, kDate | 4, 0xABCDE},
                                                 "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [00abcde]"},
                                         TextRow{{0x80010203, kDate | 4, kDirty | 0xABCDE},
                                                 "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [00abcde-dirty]"},
                                         TextRow{{0x80010203, kDate | 4, kDirty},
                                                 "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [0000000-dirty]"},
                                         TextRow{{0x80010203, kDate | 4, 0x3FFFFFFF},
                                                 "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [3fffffff]"}));

TEST(VersionTest, AFileTextHoldsCardTypeAndNumbers) {
    EXPECT_STREQ("v80_0102.03.0004", (Version{{0x80010203, 4, 0}}).toFileString().c_str());
    EXPECT_STREQ("v80_0102.03.0004",
                 (Version{{0x80010203, kDate | 4, kTwoNumbers | 5}}).toFileString().c_str());
    EXPECT_STREQ("v00_0000.01.BEEF", (Version{{1, 0xBEEF, 0}}).toFileString().c_str());
}

TEST(VersionTest, TheFileTextOfADateOnlyVersionIsItsDate) {
    EXPECT_STREQ("v2024-05-17", (Version{{0, kDate | 4, 0}}).toFileString().c_str());
    EXPECT_STREQ("v2000-00-00", Version().toFileString().c_str());
}

/// What a version is before a text is read, so that it shows what the text sets.
constexpr Version kBefore{{0x11223344, 0x55667788, 0x99AABBCC}};

struct ReadRow {
    const char* text;
    Words words;
};

class VersionFileTextTest : public testing::TestWithParam<ReadRow> {};

TEST_P(VersionFileTextTest, IsRead) {
    Version version = kBefore;
    EXPECT_TRUE(version.FromFileString(GetParam().text)) << GetParam().text;
    EXPECT_EQ(GetParam().words, version.words) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Numbers, VersionFileTextTest,
                         testing::Values(ReadRow{"v80_0102.03.0004", {0x80010203, 4, 0}},
                                         ReadRow{"v5_1.2.3", {0x05000102, 3, 0}},
                                         ReadRow{"vfF_AbCd.eF.bEEf", {0xFFABCDEF, 0xBEEF, 0}},
                                         ReadRow{"v0_0.0.0", {0, 0, 0}},
                                         ReadRow{"v 80_ 0102.03.0004", {0x80010203, 4, 0}},
                                         ReadRow{"v0x80_0102.03.0004", {0x80010203, 4, 0}}));
INSTANTIATE_TEST_SUITE_P(Date, VersionFileTextTest,
                         testing::Values(ReadRow{"v2024-05-17", {0, kDate, 0}},
                                         ReadRow{"v2024-5-17", {0, kDate, 0}},
                                         ReadRow{"v2000-00-00", {0, 0, 0}},
                                         ReadRow{"v2127-12-31", {0, 0xFF9F0000, 0}}));
INSTANTIATE_TEST_SUITE_P(Word2IsKeptOnlyWhenNegative, VersionFileTextTest,
                         testing::Values(ReadRow{"v80_0102.03.0004_80010002", {0x80010203, 4, 0x80010002}},
                                         ReadRow{"v80_0102.03.0004_FFFFFFFF", {0x80010203, 4, 0xFFFFFFFF}},
                                         ReadRow{"v80_0102.03.0004_7FFFFFFF", {0x80010203, 4, 0}},
                                         ReadRow{"v80_0102.03.0004_0", {0x80010203, 4, 0}},
                                         ReadRow{"v2024-05-17_80000000", {0, kDate, 0x80000000}},
                                         ReadRow{"v2024-05-17_12345", {0, kDate, 0}}));
INSTANTIATE_TEST_SUITE_P(WhatFollowsWord2DoesNotMatter, VersionFileTextTest,
                         testing::Values(ReadRow{"v80_0102.03.0004_80010002.bin",
                                                 {0x80010203, 4, 0x80010002}},
                                         ReadRow{"v80_0102.03.0004_1_80000000", {0x80010203, 4, 0}}));
INSTANTIATE_TEST_SUITE_P(
    ANumberTooLargeForItsFieldSpillsOverOnPurpose, VersionFileTextTest,
    testing::Values(ReadRow{"v80_1FFFF.3.4", {0x81FFFF03, 4, 0}},
                    ReadRow{"v80_0102.403.4", {0x80010603, 4, 0}}, ReadRow{"v0_-1.0.0", {0xFFFFFF00, 0, 0}},
                    ReadRow{"v0_0.-1.0", {0xFFFFFFFF, 0, 0}}, ReadRow{"v2000-16-00", {0, 0x02000000, 0}},
                    ReadRow{"v2000-00-32", {0, 0x00200000, 0}}, ReadRow{"v2000--1-00", {0, 0xFFE00000, 0}},
                    ReadRow{"v2000-00--1", {0, 0xFFFF0000, 0}}));
INSTANTIATE_TEST_SUITE_P(WhereNothingLiesAboveTheLowBitsCount, VersionFileTextTest,
                         testing::Values(ReadRow{"v180_0102.03.0004", {0x80010203, 4, 0}},
                                         ReadRow{"v-1_0.0.0", {0xFF000000, 0, 0}},
                                         ReadRow{"vffffffffffffffffffff_0.0.0", {0xFF000000, 0, 0}},
                                         ReadRow{"v80_0102.03.10004", {0x80010203, 4, 0}},
                                         ReadRow{"v80_0102.03.-1", {0x80010203, 0xFFFF, 0}},
                                         ReadRow{"v1999-00-00", {0, 0xFE000000, 0}},
                                         ReadRow{"v2152-05-17", {0, kDate, 0}},
                                         ReadRow{"v99999999999999999999-1-1", {0, 0x5E210000, 0}},
                                         ReadRow{"v-99999999999999999999-1-1", {0, 0x60210000, 0}},
                                         ReadRow{"v0_0.0.0_180000001", {0, 0, 0x80000001}}));

class VersionFileTextRefusalTest : public testing::TestWithParam<const char*> {};

TEST_P(VersionFileTextRefusalTest, ChangesNothing) {
    Version version = kBefore;
    EXPECT_FALSE(version.FromFileString(GetParam()));
    EXPECT_EQ(kBefore, version);
}

INSTANTIATE_TEST_SUITE_P(Texts, VersionFileTextRefusalTest,
                         testing::Values("", nullptr, "v", "80_0102.03.0004", "V80_0102.03.0004",
                                         " v80_0102.03.0004", "v80", "v80_", "v80_0102", "v80_0102.03",
                                         "v80_0102.03.", "v80_0102_03_0004", "v80.0102.03.0004",
                                         "v80_0102.03.0004x", "v80_0102.03.0004 ", "v80_0102.03.0004.5",
                                         "v80_0102.03.0004_", "v80_0102.03.0004_x", "vx_0102.03.0004",
                                         "v2024", "v2024-", "v2024-05", "v2024-05-", "v2024-05-17x",
                                         "v2024/05/17", "v2024-05-17_", "v2024-May-17", "vv2024-05-17"));

TEST(VersionTest, ADateIsReadIntoTheDateFieldsAlone) {
    Version version = kBefore;
    EXPECT_TRUE(version.ParseDate("2024-05-17"));
    EXPECT_EQ((Words{0x11223344, kDate | 0x7788, 0x99AABBCC}), version.words);
    EXPECT_TRUE(version.ParseDate("2000-1-1"));
    EXPECT_EQ((Words{0x11223344, 0x00217788, 0x99AABBCC}), version.words);
}

TEST(VersionTest, AMonthOrDayTooLargeForItsFieldSpillsOverOnPurposeButNotOutOfTheUpperHalfword) {
    Version version = kBefore;
    EXPECT_TRUE(version.ParseDate("2128-17-33"));
    EXPECT_EQ((Words{0x11223344, 0x02217788, 0x99AABBCC}), version.words);
    EXPECT_TRUE(version.ParseDate("-99999999999999999999-99999999999999999999--1"));
    EXPECT_EQ((Words{0x11223344, 0xFFFF7788, 0x99AABBCC}), version.words);
}

TEST(VersionTest, ATextThatIsNoDateChangesNothing) {
    for (const char* text : {"", "2024", "2024-05", "2024-05-", "2024-05-17 ", "2024-05-17_1", "17.05.2024",
                             "v2024-05-17", "2024_05_17", "today", "-"}) {
        Version version = kBefore;
        EXPECT_FALSE(version.ParseDate(text)) << text;
        EXPECT_EQ(kBefore, version) << text;
    }
    Version version = kBefore;
    EXPECT_FALSE(version.ParseDate(nullptr));
    EXPECT_EQ(kBefore, version);
}

TEST(VersionTest, IsSetFromAFileText) {
    Version version = kBefore;
    EXPECT_TRUE(version.Set("v80_0102.03.0004_80010002"));
    EXPECT_EQ((Words{0x80010203, 4, 0x80010002}), version.words);
    EXPECT_TRUE(version.Set("v2024-05-17"));
    EXPECT_EQ((Words{0, kDate, 0}), version.words);
}

TEST_P(VersionTextTest, SetReadsItBack) {
    Words expected = GetParam().words;
    if ((expected[2] & kTwoNumbers) != 0) {
        expected[2] &= 0x8FFFFFFF;  // bits 28-30 are not shown
    }
    Version version = kBefore;
    EXPECT_TRUE(version.Set(GetParam().text)) << GetParam().text;
    EXPECT_EQ(expected, version.words) << GetParam().text;
}

TEST(VersionTest, SetReadsWhatAnyVersionWrites) {
    std::mt19937 random(3);
    for (int i = 0; i < 1000; ++i) {
        Version version;
        for (std::uint32_t& word : version.words) {
            word = static_cast<std::uint32_t>(random());
        }
        if (version.hasFurtherNumbers()) {
            version.words[2] &= 0x8FFFFFFF;
        }
        Version read;
        ASSERT_TRUE(read.Set(version.toString().c_str())) << version.toString().c_str();
        ASSERT_EQ(version, read) << version.toString().c_str();

        version.words[1] &= 0xFFFF;
        version.words[2] = 0;
        ASSERT_TRUE(read.Set(version.toFileString().c_str())) << version.toFileString().c_str();
        ASSERT_EQ(version, read) << version.toFileString().c_str();
    }
}

class VersionSetRefusalTest : public testing::TestWithParam<const char*> {};

TEST_P(VersionSetRefusalTest, ChangesNothing) {
    Version version = kBefore;
    EXPECT_FALSE(version.Set(GetParam()));
    EXPECT_EQ(kBefore, version);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, VersionSetRefusalTest,
    testing::Values("", nullptr, "1.2.3", "CT: ", "CT: 0x80", "CT: 0x80 Ver: ", "CT: 0x80 Ver: 0102.03.0004",
                    "CT: 0x80 Ver: 0102.03.0004 ", "CT: 0x80 Ver: 0102.03.0004 (17/05/2024",
                    "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) ", "CT: 0x80 Ver: 0102.03.0004 (17-05-2024)",
                    "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [", "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) []",
                    "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [abc",
                    "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [abc-",
                    "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [abc-dirty",
                    "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [abc-clean]",
                    "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [abc]]",
                    "CT: 0x80 Ver: 0102.03.0004 (17/05/2024) [abc-dirty] ",
                    "CT: 0x80 Ver: 0102.03.0004 [01.02] (17/05/2024) [abc]",
                    "CT: 0x80 Ver: 0102.03.0004 [01] (17/05/2024)",
                    "CT: 0x80 Ver: 0102.03.0004 [01.02](17/05/2024)",
                    "ct: 0x80 Ver: 0102.03.0004 (17/05/2024)"));

}  // namespace
