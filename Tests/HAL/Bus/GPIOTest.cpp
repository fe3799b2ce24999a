#include "Vl/HAL/Bus/GPIO.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/GpioCalls.h"
#include "Tools/boardsim/Host/Mounts.h"

namespace {

using testing::ElementsAre;
using Valen::HAL::GPIO;

class GPIOTest : public BoardWorld {
protected:
    GPIOTest() { support::PrivateWorld::write("/dev/gpio", ""); }

    GpioCalls driver;
};

TEST_F(GPIOTest, OpensTheDeviceForReadingAndClosesItAtTheEndAndOnExec) {
    const int next = dup(0);
    close(next);
    std::optional<GPIO> gpio(std::in_place);
    EXPECT_TRUE(gpio->isOpen());
    EXPECT_EQ(1, descriptorsOn("/dev/gpio"));
    EXPECT_EQ(FD_CLOEXEC, fcntl(next, F_GETFD));
    EXPECT_EQ(O_RDONLY, fcntl(next, F_GETFL) & O_ACCMODE);
    gpio.reset();
    EXPECT_EQ(0, descriptorsOn("/dev/gpio"));
}

TEST_F(GPIOTest, WithoutTheDeviceEveryRequestFails) {
    std::filesystem::remove("/dev/gpio");
    GPIO gpio;
    EXPECT_FALSE(gpio.isOpen());
    EXPECT_LT(gpio.request(1), 0);
    EXPECT_LT(gpio.free(1), 0);
    EXPECT_LT(gpio.setdir(1, true, true), 0);
    EXPECT_LT(gpio.setPin(1, 1), 0);
    EXPECT_FALSE(gpio.getPin(1));
}

TEST_F(GPIOTest, RequestAndFreePassThePin) {
    GPIO gpio;
    EXPECT_EQ(0, gpio.request(5));
    EXPECT_EQ(0, gpio.free(6));
    EXPECT_THAT(driver.calls, ElementsAre(GpioCall{0x7D06, 5}, GpioCall{0x7D07, 6}));
}

TEST_F(GPIOTest, SetPinPassesTheLevelInBit16) {
    GPIO gpio;
    gpio.setPin(5, 2);
    gpio.setPin(5, -1);
    gpio.setPin(5, 0);
    EXPECT_THAT(driver.calls,
                ElementsAre(GpioCall{0x7D03, 0x10005}, GpioCall{0x7D03, 0x10005}, GpioCall{0x7D03, 0x5}));
}

TEST_F(GPIOTest, SetdirPassesItsFlagsInBits24And16) {
    GPIO gpio;
    gpio.setdir(5, true, false);
    gpio.setdir(5, false, true);
    gpio.setdir(5, true, true);
    EXPECT_THAT(driver.calls, ElementsAre(GpioCall{0x7D04, 0x01000005}, GpioCall{0x7D04, 0x00010005},
                                          GpioCall{0x7D04, 0x01010005}));
}

TEST_F(GPIOTest, OnlySixteenBitsOfAPinArePassed) {
    GPIO gpio;
    gpio.setPin(-1, 0);
    gpio.getPin(0x12345);
    EXPECT_THAT(driver.calls, ElementsAre(GpioCall{0x7D03, 0xFFFF}, GpioCall{0x7D05, 0x2345}));
}

TEST_F(GPIOTest, ResultsAreTheDrivers) {
    GPIO gpio;
    driver.result = -1;
    EXPECT_EQ(-1, gpio.request(5));
    EXPECT_EQ(-1, gpio.free(5));
    EXPECT_EQ(-1, gpio.setdir(5, true, true));
    EXPECT_EQ(-1, gpio.setPin(5, 1));
}

TEST_F(GPIOTest, APinIsHighWhenTheDriverAnswersNotZero) {
    GPIO gpio;
    EXPECT_FALSE(gpio.getPin(5));
    driver.result = 1;
    EXPECT_TRUE(gpio.getPin(5));
    driver.result = 0x10000;
    EXPECT_TRUE(gpio.getPin(5));
    driver.result = -1;
    EXPECT_FALSE(gpio.getPin(5));
}

/// With a "/sys/class" of its own, in which there is no controller yet.
class GPIOBaseTest : public BoardWorld {
protected:
    GPIOBaseTest() { boardsim::coverDirectory("/sys/class", boardsim::keepNothing); }
    ~GPIOBaseTest() override { umount2("/sys/class", MNT_DETACH); }

    static void addController(const std::string& name, const std::string& label, const std::string& base) {
        support::PrivateWorld::write("/sys/class/gpio/" + name + "/label", label);
        support::PrivateWorld::write("/sys/class/gpio/" + name + "/base", base);
    }
};

TEST_F(GPIOBaseTest, IsTheFirstLineOfTheLabelledController) {
    addController("gpiochip480", "other\n", "480\n");
    addController("gpiochip448", "oled_pio\n", "448\n");
    EXPECT_EQ(448, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, IsMinusOneWithoutControllers) {
    EXPECT_EQ(-1, GPIO::getBase("oled_pio"));
    support::PrivateWorld::write("/sys/class/gpio", "no directory");
    EXPECT_EQ(-1, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, IsMinusOneForAnUnknownLabel) {
    addController("gpiochip448", "oled_pio\n", "448\n");
    EXPECT_EQ(-1, GPIO::getBase("old_pio"));
}

TEST_F(GPIOBaseTest, ALabelWithoutANewlineDoesNotMatch) {
    addController("gpiochip448", "oled_pio", "448\n");
    EXPECT_EQ(-1, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, ALongerLabelThatBeginsSoMatchesOnPurpose) {
    addController("gpiochip448", "oled_pio2\n", "448\n");
    EXPECT_EQ(448, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, AmongSeveralThatMatchTheFirstListedCounts) {
    addController("gpiochip100", "oled_pio\n", "100\n");
    addController("gpiochip200", "oled_pio2\n", "200\n");
    addController("gpiochip300", "oled_pio3\n", "300\n");
    const auto first = std::filesystem::directory_iterator("/sys/class/gpio")->path().filename().native();
    EXPECT_EQ(std::stoi(first.substr(8)), GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, ALabelThatBeginsTheWantedOneDoesNotMatch) {
    addController("gpiochip448", "oled\n", "448\n");
    EXPECT_EQ(-1, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, OnlyThirtyOneBytesOfABaseAreRead) {
    addController("gpiochip448", "oled_pio\n", std::string(29, '0') + "448\n");
    EXPECT_EQ(44, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, ABaseTooLargeForALineNumberDoesNotMatch) {
    addController("gpiochip448", "oled_pio\n", "4294967296\n");
    EXPECT_EQ(-1, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, NoDescriptorIsLeft) {
    addController("gpiochip448", "oled_pio\n", "448\n");
    GPIO::getBase("oled_pio");
    EXPECT_EQ(0, descriptorsOn("/sys/class/gpio/gpiochip448/label"));
    EXPECT_EQ(0, descriptorsOn("/sys/class/gpio/gpiochip448/base"));
}

TEST_F(GPIOBaseTest, OtherEntriesAreNotLookedAt) {
    addController("gpio448", "oled_pio\n", "448\n");
    EXPECT_EQ(-1, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, AControllerWithoutLabelOrBaseDoesNotMatch) {
    support::PrivateWorld::makeDirectory("/sys/class/gpio/gpiochip1");
    support::PrivateWorld::write("/sys/class/gpio/gpiochip2/label", "oled_pio\n");
    addController("gpiochip3", "oled_pio\n", "");
    EXPECT_EQ(-1, GPIO::getBase("oled_pio"));
    addController("gpiochip448", "oled_pio\n", "448\n");
    EXPECT_EQ(448, GPIO::getBase("oled_pio"));
}

TEST_F(GPIOBaseTest, NothingIsLogged) {
    logEverything();
    addController("gpiochip2", "x", "y");
    GPIO::getBase("oled_pio");
    EXPECT_THAT(syslog.lines(), testing::IsEmpty());
}

}  // namespace
