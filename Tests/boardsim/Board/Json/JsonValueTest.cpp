#include "Tools/boardsim/Board/Json/JsonValue.h"

#include <gmock/gmock.h>

namespace {

using boardsim::JsonError;
using boardsim::JsonList;
using boardsim::JsonObject;
using boardsim::JsonValue;
using boardsim::parseJson;
using boardsim::printJson;

const JsonValue& member(const JsonValue& object, std::size_t number) {
    return std::get<JsonObject>(object.value).at(number).second;
}

std::size_t lineOfError(const std::string& text) {
    try {
        parseJson(text);
    } catch (const JsonError& error) {
        return error.line();
    }
    return 0;
}

TEST(JsonValueTest, EveryKindOfValueIsRead) {
    const JsonValue list = parseJson(R"([null, true, -3, 3, 0.5, "text", [], {"a": 1}])");
    const auto& values = std::get<JsonList>(list.value);
    ASSERT_EQ(8U, values.size());
    EXPECT_TRUE(std::holds_alternative<std::nullptr_t>(values[0].value));
    EXPECT_TRUE(std::get<bool>(values[1].value));
    EXPECT_EQ(-3, std::get<std::int64_t>(values[2].value));
    EXPECT_EQ(3U, std::get<std::uint64_t>(values[3].value));
    EXPECT_EQ(0.5, std::get<double>(values[4].value));
    EXPECT_EQ("text", std::get<std::string>(values[5].value));
    EXPECT_TRUE(std::get<JsonList>(values[6].value).empty());
    EXPECT_EQ(1U, std::get<std::uint64_t>(member(values[7], 0).value));
}

TEST(JsonValueTest, EveryValueKnowsItsLine) {
    const JsonValue root = parseJson("\n{\n\"a\": 12\n,\n\"b\": \"x\"\n,\"c\": {\n\"d\": true\n}}\n");
    EXPECT_EQ(2U, root.line);
    EXPECT_EQ(3U, member(root, 0).line) << "a number ends before the line does";
    EXPECT_EQ(5U, member(root, 1).line);
    EXPECT_EQ(6U, member(root, 2).line);
    EXPECT_EQ(7U, member(member(root, 2), 0).line);
}

TEST(JsonValueTest, WhatIsNoJsonIsToldWithItsLine) {
    EXPECT_EQ(1U, lineOfError(""));
    EXPECT_EQ(2U, lineOfError("{\n\"a\" 1}"));
    EXPECT_EQ(3U, lineOfError("{\"a\": [\n1,\n2}"));
    EXPECT_EQ(2U, lineOfError("{}\n{}"));
    EXPECT_EQ(1U, lineOfError("\"\xFF\""));
    EXPECT_EQ(1U, lineOfError("1e999"));
    EXPECT_EQ(2U, lineOfError("{\"a\": 1,\n\"a\": 2}"));
}

TEST(JsonValueTest, ThirtyTwoLevelsAreTaken) {
    EXPECT_EQ(0U, lineOfError(std::string(32, '[') + std::string(32, ']')));
    EXPECT_EQ(1U, lineOfError(std::string(33, '[') + std::string(33, ']')));
}

TEST(JsonValueTest, PlainListsArePrintedInOneLine) {
    const std::string text =
        "{\n  \"a\": [1, -2, 0.5, true, null, \"\\\"\\n\"],\n  \"b\": [\n    [],\n    {}\n  ]\n}";
    // An empty object has no lines.
    EXPECT_EQ(text, printJson(parseJson(text)));
}

TEST(JsonValueTest, TextThatIsNoUtf8IsPrintedAsValidJson) {
    const std::string printed = printJson({std::string("a\xFFz")});
    EXPECT_EQ("a\xEF\xBF\xBDz", std::get<std::string>(parseJson(printed).value));
}

}  // namespace
