#include "Tools/boardsim/Board/BoardPart.h"

#include <gtest/gtest.h>

namespace {

using boardsim::BoardPart;
using boardsim::BoardParts;

TEST(BoardPartTest, NamesGoBothWays) {
    for (const char* name : {"screen", "spi",    "panel-registers", "layout", "fpga", "gpio",
                             "log",    "font",   "font-directory",  "w1",     "cpld", "mii",
                             "i2c",    "rom",    "hwmon",           "eeprom", "sync", "network",
                             "inband", "pattern"}) {
        const auto part = boardsim::partNamed(name);
        ASSERT_TRUE(part) << name;
        EXPECT_EQ(name, boardsim::partName(*part));
    }
    EXPECT_FALSE(boardsim::partNamed(""));
    EXPECT_FALSE(boardsim::partNamed("Screen"));
}

TEST(BoardPartTest, AllNamesAreListed) {
    EXPECT_EQ(
        "screen, spi, panel-registers, layout, fpga, gpio, log, font, font-directory, w1, cpld, mii, "
        "i2c, rom, hwmon, eeprom, sync, network, inband, pattern",
        boardsim::allPartNames());
}

TEST(BoardPartTest, ASetHasWhatWasAdded) {
    BoardParts parts;
    EXPECT_FALSE(parts.has(BoardPart::Screen));
    parts.add(BoardPart::FontDirectory);
    EXPECT_TRUE(parts.has(BoardPart::FontDirectory));
    EXPECT_FALSE(parts.has(BoardPart::Font));
}

}  // namespace
