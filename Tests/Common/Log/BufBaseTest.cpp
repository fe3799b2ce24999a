#include "Vl/Common/Log/BufBase.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Valen::Log::BufBase;

TEST(BufBaseTest, PiecesStandBehindEachOther) {
    BufBase buffer;
    char* at = buffer.put(buffer.begin(), "one");
    EXPECT_EQ(buffer.begin() + 3, at);
    EXPECT_EQ(buffer.begin() + 8, buffer.put(at, " more"));
    EXPECT_STREQ("one more", buffer.text());
}

TEST(BufBaseTest, WhatDoesNotFitIsCutAt511Characters) {
    BufBase buffer;
    char* at = buffer.put(buffer.begin(), std::string(600, 'x').c_str());
    EXPECT_EQ(buffer.begin() + 511, at);
    EXPECT_EQ(at, buffer.put(at, "y"));
    EXPECT_EQ(std::string(511, 'x'), buffer.text());
}

}  // namespace
