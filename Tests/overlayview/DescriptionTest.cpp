#include "Tools/overlayview/Description.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "Tests/overlayview/OverlayBytes.h"
#include "Tools/overlayview/View.h"

namespace {

using overlayview::asJson;
using overlayview::asText;
using overlayview::Description;
using testing::HasSubstr;
using testing::Not;

Description whiteHundred() {
    overlayview::Request request;
    request.width = 10;
    return overlayview::look(overlays::whiteHundred(), request).description;
}

TEST(DescriptionTest, TextHasALineForEveryFact) {
    EXPECT_EQ(
        "file            w.rle\n"
        "file bytes      140\n"
        "marker          ffffffff\n"
        "identifier      7\n"
        "body words      32\n"
        "body bytes      128\n"
        "kind            rle\n"
        "pixels          100\n"
        "width           10\n"
        "height          10\n"
        "run words       1\n"
        "runs            1\n"
        "longest run     100\n"
        "covered pixels  100\n"
        "colours         1\n"
        "padding bytes   120\n",
        asText("w.rle", whiteHundred()));
}

TEST(DescriptionTest, JsonTellsTheSameAndIsAlwaysComplete) {
    const nlohmann::json json = nlohmann::json::parse(asJson("w.rle", whiteHundred()));
    EXPECT_EQ("w.rle", json["file"]);
    EXPECT_EQ("ffffffff", json["marker"]);
    EXPECT_EQ(7, json["identifier"]);
    EXPECT_EQ(32, json["body_words"]);
    EXPECT_EQ("rle", json["kind"]);
    EXPECT_EQ(10, json["width"]);
    EXPECT_EQ(100, json["longest_run"]);
    EXPECT_EQ(120, json["padding_bytes"]);
    EXPECT_TRUE(json["damage"].is_array());
    EXPECT_TRUE(json["notes"].is_array());
    EXPECT_TRUE(json["lacking"].is_array());
}

TEST(DescriptionTest, FindingsFollowTheFacts) {
    Description description;
    description.findings = {{"one", "two"}, {"odd"}, {"more"}};
    EXPECT_THAT(asText("f", description), HasSubstr("damage          one\n"
                                                    "damage          two\n"
                                                    "note            odd\n"
                                                    "for a picture   more\n"));
    const nlohmann::json json = nlohmann::json::parse(asJson("f", description));
    EXPECT_EQ((std::vector<std::string>{"one", "two"}), json["damage"].get<std::vector<std::string>>());
    EXPECT_EQ("odd", json["notes"][0]);
    EXPECT_EQ("more", json["lacking"][0]);
}

TEST(DescriptionTest, WhatIsNotKnownIsLeftOut) {
    EXPECT_THAT(asText("f", Description{}), Not(HasSubstr("marker")));
    EXPECT_FALSE(nlohmann::json::parse(asJson("f", Description{})).contains("width"));
}

TEST(DescriptionTest, AFileNameThatIsNotUtf8DoesNotBreakTheJson) {
    EXPECT_EQ("a\xEF\xBF\xBD", nlohmann::json::parse(asJson("a\xFF", Description{}))["file"]);
}

}  // namespace
