#include "Tools/boardsim/Models/GpioClass.h"

#include <gmock/gmock.h>

namespace {

using boardsim::GpioBlock;
using boardsim::GpioClass;
using boardsim::TextAttribute;
using testing::ElementsAre;

class GpioClassTest : public testing::Test {
protected:
    TextAttribute file(const std::string& path) {
        const std::size_t slash = path.find('/');
        std::vector<TextAttribute> files = gpio.files();
        for (GpioClass::Directory& directory : gpio.directories()) {
            if (slash != std::string::npos && directory.name == path.substr(0, slash)) {
                files = directory.files;
            }
        }
        for (TextAttribute& candidate : files) {
            if (candidate.name == path.substr(slash == std::string::npos ? 0 : slash + 1)) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no " << path;
        return {path, [] { return ""; }, [](std::string_view) { return std::errc{}; }};
    }
    std::string show(const std::string& path) { return file(path).show(); }
    std::errc store(const std::string& path, std::string_view text) { return file(path).store(text); }

    std::vector<std::string> names() {
        std::vector<std::string> found;
        for (const GpioClass::Directory& directory : gpio.directories()) {
            found.push_back(directory.name);
        }
        return found;
    }

    GpioBlock lines{{{"alpha_pio", 480, 4}, {"beta_pio", 500, 12}}};
    GpioClass gpio{lines};
};

TEST_F(GpioClassTest, ChipsTellTheirLabelTheirFirstLineAndTheirSize) {
    EXPECT_THAT(names(), ElementsAre("gpiochip480", "gpiochip500"));
    EXPECT_EQ("alpha_pio\n", show("gpiochip480/label"));
    EXPECT_EQ("480\n", show("gpiochip480/base"));
    EXPECT_EQ("4\n", show("gpiochip480/ngpio"));
    EXPECT_EQ("beta_pio\n", show("gpiochip500/label"));
    EXPECT_EQ("12\n", show("gpiochip500/ngpio"));
}

TEST_F(GpioClassTest, AnExportedLineIsTakenAndHasADirectoryUntilItIsUnexported) {
    EXPECT_EQ(std::errc{}, store("export", "482\n"));
    EXPECT_THAT(names(), ElementsAre("gpiochip480", "gpiochip500", "gpio482"));
    EXPECT_EQ(std::errc::device_or_resource_busy, lines.request(482));
    EXPECT_EQ(std::errc::device_or_resource_busy, store("export", "482"));
    EXPECT_EQ(std::errc{}, store("unexport", "482"));
    EXPECT_THAT(names(), ElementsAre("gpiochip480", "gpiochip500"));
    EXPECT_FALSE(lines.isTaken(482));
    EXPECT_EQ(std::errc::invalid_argument, store("unexport", "482"));
}

TEST_F(GpioClassTest, WhatIsNoLineOrNotExportedIsRefused) {
    EXPECT_EQ(std::errc::invalid_argument, store("export", "479"));
    EXPECT_EQ(std::errc::invalid_argument, store("export", "-1"));
    EXPECT_EQ(std::errc::invalid_argument, store("export", "first"));
    lines.request(481);
    EXPECT_EQ(std::errc::invalid_argument, store("unexport", "481"));
    EXPECT_TRUE(lines.isTaken(481));
}

TEST_F(GpioClassTest, DirectionAndValueAreThoseOfTheLine) {
    store("export", "480");
    EXPECT_EQ("in\n", show("gpio480/direction"));
    EXPECT_EQ(std::errc::operation_not_permitted, store("gpio480/value", "1"));
    lines.drive(480, true);
    EXPECT_EQ("1\n", show("gpio480/value"));
    EXPECT_EQ(std::errc{}, store("gpio480/direction", "out\n"));
    EXPECT_EQ("out\n", show("gpio480/direction"));
    EXPECT_EQ(false, lines.level(480));
    EXPECT_EQ(std::errc{}, store("gpio480/value", "1\n"));
    EXPECT_EQ(true, lines.level(480));
    EXPECT_EQ(std::errc{}, store("gpio480/direction", "high"));
    EXPECT_EQ(true, lines.level(480));
    EXPECT_EQ(std::errc{}, store("gpio480/direction", "low"));
    EXPECT_EQ(false, lines.level(480));
    EXPECT_EQ(std::errc{}, store("gpio480/direction", "in"));
    EXPECT_EQ(false, lines.isOutput(480));
    EXPECT_EQ(std::errc::invalid_argument, store("gpio480/direction", "sideways"));
    EXPECT_EQ(std::errc::invalid_argument, store("gpio480/value", "up"));
}

TEST_F(GpioClassTest, AFileThatIsStillOpenAfterTheLineWasUnexportedWritesToNoDevice) {
    store("export", "480");
    const std::vector<TextAttribute> open{file("gpio480/direction"), file("gpio480/value"),
                                          file("gpio480/active_low")};
    store("unexport", "480");
    EXPECT_EQ(std::errc::no_such_device, open[0].store("high"));
    EXPECT_EQ(std::errc::no_such_device, open[1].store("1"));
    EXPECT_EQ(std::errc::no_such_device, open[2].store("1"));
    EXPECT_EQ(false, lines.isOutput(480));
}

TEST_F(GpioClassTest, ActiveLowTurnsTheValueButNotTheDirectionsLevel) {
    store("export", "480");
    EXPECT_EQ("0\n", show("gpio480/active_low"));
    EXPECT_EQ(std::errc{}, store("gpio480/active_low", "1"));
    EXPECT_EQ("1\n", show("gpio480/active_low"));
    EXPECT_EQ("1\n", show("gpio480/value"));
    store("gpio480/direction", "high");
    EXPECT_EQ(true, lines.level(480));
    EXPECT_EQ("0\n", show("gpio480/value"));
    store("gpio480/value", "1");
    EXPECT_EQ(false, lines.level(480));
}

}  // namespace
