#include "Tools/boardinfo/Screen.h"

#include <gtest/gtest.h>

namespace {

using boardinfo::redrawn;

TEST(ScreenTest, StartsAtTheTopAndClearsWhatWasThereBefore) {
    EXPECT_EQ("\033[Hone\033[K\ntwo\033[K\n\033[J", redrawn("one\ntwo\n", 24));
}

TEST(ScreenTest, KeepsEmptyLines) {
    EXPECT_EQ("\033[Hone\033[K\n\033[K\ntwo\033[K\n\033[J", redrawn("one\n\ntwo\n", 24));
}

TEST(ScreenTest, WhatIsLongerThanTheTerminalIsCutRatherThanScrolled) {
    EXPECT_EQ("\033[H1\033[K\n2\033[K\n(2 more lines)\033[K\n\033[J", redrawn("1\n2\n3\n4\n", 4));
    EXPECT_EQ("\033[H1\033[K\n2\033[K\n3\033[K\n\033[J", redrawn("1\n2\n3\n", 4)) << "fits";
    EXPECT_EQ("\033[H(3 more lines)\033[K\n\033[J", redrawn("1\n2\n3\n", 2));
}

TEST(ScreenTest, ATerminalThatDoesNotTellItsSizeGetsAllOfIt) {
    EXPECT_EQ("\033[H1\033[K\n2\033[K\n3\033[K\n\033[J", redrawn("1\n2\n3\n", 0));
}

}  // namespace
