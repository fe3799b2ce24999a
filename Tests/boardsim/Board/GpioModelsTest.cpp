#include "Tools/boardsim/Board/GpioModels.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using boardsim::ActingFile;
using boardsim::GpioModels;
using boardsim::IoctlAnswer;
using boardsim::parseFault;
using boardsim::ServedEntry;
using testing::ElementsAre;
using testing::HasSubstr;

class GpioModelsTest : public testing::Test {
protected:
    IoctlAnswer request(unsigned code, std::uint64_t argument) {
        return gpio.device().open().ioctl({0, code, argument});
    }
    std::string complaint(const std::string& text) {
        try {
            gpio.apply(parseFault(text));
        } catch (const std::invalid_argument& refusal) {
            return refusal.what();
        }
        return {};
    }

    std::vector<std::string> told;
    GpioModels gpio{{{"some_pio", 480, 4}}, [this](const std::string& line) { told.push_back(line); }};
};

TEST_F(GpioModelsTest, TheDeviceAnswersRequestsAndTellsThem) {
    EXPECT_EQ("/dev/gpio", gpio.device().path);
    EXPECT_EQ(0, request(0x7D04, 0x010101E1).value);
    EXPECT_EQ(1, request(0x7D05, 481).value);
    EXPECT_EQ(std::errc::invalid_argument, request(0x7D05, 7).error);
    EXPECT_THAT(told, ElementsAre("gpio direction 481 output high -> 0", "gpio get 481 -> 1",
                                  "gpio get 7: Invalid argument"));
}

TEST_F(GpioModelsTest, TheClassShowsChipsAndExportedLines) {
    const auto names = [&] {
        std::vector<std::string> found;
        for (const ServedEntry& entry : gpio.tree().root->entries()) {
            found.push_back(entry.name);
        }
        return found;
    };
    EXPECT_EQ("/sys/class/gpio", gpio.tree().path);
    EXPECT_THAT(names(), ElementsAre("export", "unexport", "gpiochip480"));
    const auto exporting = std::get<0>(gpio.tree().root->entries()[0].node);
    EXPECT_EQ(0200U, exporting->mode);
    exporting->open().write(0, std::as_bytes(std::span(std::string_view("482"))));
    EXPECT_THAT(names(), ElementsAre("export", "unexport", "gpiochip480", "gpio482"));
    EXPECT_EQ(gpio.tree().root->entries()[3].node, gpio.tree().root->entries()[3].node);
}

TEST_F(GpioModelsTest, ALineCanBeStuckDrivenOrTaken) {
    gpio.apply(parseFault("gpio:some_pio+0:stuck=1"));
    gpio.apply(parseFault("gpio:some_pio+1:value=1"));
    gpio.apply(parseFault("gpio:some_pio+3:taken"));
    EXPECT_EQ(true, gpio.lines().level(480));
    EXPECT_EQ(true, gpio.lines().level(481));
    EXPECT_EQ(false, gpio.lines().level(482));
    EXPECT_EQ(std::errc::device_or_resource_busy, request(0x7D06, 483).error);
}

TEST_F(GpioModelsTest, FaultsThatNoLineCanHaveAreRefused) {
    for (const char* device : {"some_pio", "some_pio+4", "other_pio+0", "480", "some_pio+x"}) {
        EXPECT_THAT(complaint("gpio:" + std::string(device) + ":taken"), HasSubstr("want LABEL+NUMBER"));
    }
    EXPECT_THAT(complaint("gpio:some_pio+0:loose"), HasSubstr("there are stuck, value, taken"));
    EXPECT_THAT(complaint("gpio:some_pio+0:stuck=2"), HasSubstr("number from 0 to 1"));
}

}  // namespace
