#include "Vl/Common/Strings/SimpleString.h"

#include <gmock/gmock.h>

#include "Tests/Common/Strings/StringFields.h"

namespace {

using Valen::SimpleString;

TEST(SimpleStringTest, LengthAndEmptyLookAtTheText) {
    EXPECT_EQ(SimpleString("12345").length(), 5U);
    EXPECT_EQ(SimpleString(100).length(), 0U);
    EXPECT_TRUE(SimpleString(100).empty());
    EXPECT_FALSE(SimpleString(" ").empty());
}

TEST(SimpleStringTest, IndexGivesTheCharacter) {
    const SimpleString string("abc");
    EXPECT_EQ(string[0], 'a');
    EXPECT_EQ(string[2], 'c');
    EXPECT_EQ(string[3], '\0');
}

TEST(SimpleStringTest, FindGivesTheFirstPlaceAndRfindTheLast) {
    const SimpleString string("/dev/i2c-1");
    EXPECT_EQ(string.find('/'), 0);
    EXPECT_EQ(string.rfind('/'), 4);
    EXPECT_EQ(string.find("i2c"), 5);
    EXPECT_EQ(string.find(""), 0);
    EXPECT_EQ(string.find('x'), -1);
    EXPECT_EQ(string.rfind('x'), -1);
    EXPECT_EQ(string.find("i2d"), -1);
}

TEST(SimpleStringTest, TheTerminatorIsFoundAtTheLength) {
    const SimpleString string("abc");
    EXPECT_EQ(string.find('\0'), 3);
    EXPECT_EQ(string.rfind('\0'), 3);
}

TEST(SimpleStringTest, EndsWithComparesTheTail) {
    const SimpleString string("Font.ttf");
    EXPECT_TRUE(string.endsWith(".ttf"));
    EXPECT_TRUE(string.endsWith("Font.ttf"));
    EXPECT_TRUE(string.endsWith(""));
    EXPECT_FALSE(string.endsWith(".tt"));
    EXPECT_FALSE(string.endsWith("a Font.ttf"));
}

TEST(SimpleStringTest, ComparisonsAreThoseOfTheCharacters) {
    const SimpleString abc("abc");
    const SimpleString abd("abd", false);
    EXPECT_TRUE(abc == SimpleString("abc"));
    EXPECT_FALSE(abc == abd);
    EXPECT_TRUE(abc != abd);
    EXPECT_TRUE(abc == "abc");
    EXPECT_TRUE("abc" == abc);
    EXPECT_TRUE(abc != "ab");
    EXPECT_TRUE(abc < abd);
    EXPECT_FALSE(abd < abc);
    EXPECT_FALSE(abc < abc);
    EXPECT_TRUE(abc < "b");
    EXPECT_FALSE(abc < "abc");
    EXPECT_TRUE(abc > "ab");
    EXPECT_FALSE(abc > "abc");
    EXPECT_TRUE(abc < "\xE4") << "characters compare as unsigned";
}

TEST(SimpleStringTest, EraseCutsTheTextAndKeepsTheBlock) {
    SimpleString string("abcdef");
    string.erase(3);
    EXPECT_STREQ(string.c_str(), "abc");
    EXPECT_EQ(capacityOf(string), 7);
    string.erase(3);
    EXPECT_STREQ(string.c_str(), "abc");
    string.clear();
    EXPECT_TRUE(string.empty());
    EXPECT_EQ(capacityOf(string), 7);
}

TEST(SimpleStringTest, EraseAndClearWriteIntoANonOwnedTextOnPurpose) {
    char text[] = "abcdef";
    SimpleString string(text, false);
    string.erase(3);
    EXPECT_STREQ(text, "abc");
    string.clear();
    EXPECT_STREQ(text, "");
    EXPECT_EQ(string.c_str(), text);
    EXPECT_EQ(capacityOf(string), -1);
}

TEST(SimpleStringTest, ClearingAnEmptyLiteralWritesNothing) {
    SimpleString string("", false);
    string.clear();
    EXPECT_TRUE(string.empty());
}

}  // namespace
