#include "Vl/HAL/Board/Thermals.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <string>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tools/boardsim/Host/Mounts.h"

namespace {

using support::PrivateWorld;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::CPInterface;
using Valen::therm_entry;

constexpr int kUnknown = 0x7FFFFFFF;
constexpr int kBefore = 4711;

std::string pathOf(int hwmon, int sensor) {
    return "/sys/class/hwmon/hwmon" + std::to_string(hwmon) + "/device/temp" + std::to_string(sensor) +
           "_input";
}

class ThermalsTest : public BoardWorld {
protected:
    ThermalsTest() {
        boardsim::coverDirectory("/sys/class", boardsim::keepNothing);
        logUpTo(Valen::Log::SeverityLevel::DEBUG);
    }
    ~ThermalsTest() override { umount2("/sys/class", MNT_DETACH); }

    /// Opens a sensor that answers `text`. @return its descriptor, closed by the next one's opening.
    int openSensor(const std::string& text) {
        PrivateWorld::write(pathOf(0, 1), text);
        const therm_entry entry{.hwmon = 0, .sensor = 1};
        descriptor = Valen::Descriptor();
        int number = -1;
        EXPECT_TRUE(CPInterface::openTherm(&entry, &number, 1));
        descriptor = Valen::Descriptor(number);
        return number;
    }

    Valen::Descriptor descriptor;
    int value = kBefore;
};

TEST_F(ThermalsTest, AnEntryIsOneByteWithTheDeviceInItsLowHalf) {
    EXPECT_EQ(0x53, std::bit_cast<unsigned char>(therm_entry{.hwmon = 3, .sensor = 5}));
}

TEST_F(ThermalsTest, SensorsAreOpenedByTheirNumbersWhetherTheyAreThereOrNot) {
    PrivateWorld::write(pathOf(3, 5), "21000\n");
    PrivateWorld::write(pathOf(15, 15), "-1000\n");
    const std::array entries = {therm_entry{.hwmon = 3, .sensor = 5}, therm_entry{.hwmon = 5, .sensor = 3},
                                therm_entry{.hwmon = 15, .sensor = 15}};
    std::array<int, 4> fds = {77, 77, 77, 77};
    EXPECT_TRUE(CPInterface::openTherm(entries.data(), fds.data(), 3));
    EXPECT_EQ(1, descriptorsOn(pathOf(3, 5)));
    EXPECT_GE(fds[0], 1);
    EXPECT_LT(fds[1], 0);
    EXPECT_GE(fds[2], 1);
    EXPECT_EQ(77, fds[3]);
    EXPECT_EQ(O_RDONLY, fcntl(fds[0], F_GETFL) & O_ACCMODE);
    EXPECT_EQ(FD_CLOEXEC, fcntl(fds[0], F_GETFD));
    EXPECT_TRUE(CPInterface::gettemp(value, fds[0]));
    EXPECT_EQ(21000, value);
    EXPECT_TRUE(CPInterface::gettemp(value, fds[2]));
    EXPECT_EQ(-1000, value);
    close(fds[0]);
    close(fds[2]);
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(ThermalsTest, NoEntriesOpenNothing) {
    EXPECT_TRUE(CPInterface::openTherm(nullptr, nullptr, 0));
    EXPECT_TRUE(CPInterface::openTherm(nullptr, nullptr, -1));
}

struct Answer {
    std::string text;
    bool result;
    int value;
    bool isLogged;
};

TEST_F(ThermalsTest, ASensorsAnswerIsANumberOrNot) {
    const Answer answers[] = {
        {"21000\n", true, 21000, false},
        {"-5125\n", true, -5125, false},
        {"0\n", true, 0, false},
        {"45", true, 45, false},
        {" 7\n", true, 7, false},
        {"12abc", true, 12, false},
        {"123456789\n", true, 1234567, false},  // only so much is read
        {"abc\n", false, kUnknown, false},
        {"-\n", false, kUnknown, false},
        {"\n\n", false, kUnknown, false},
        {std::string(3, '\0'), false, kUnknown, false},
        {"7", false, kBefore, true},
        {"\n", false, kBefore, true},
        {"", false, kBefore, true},
    };
    for (const auto& [text, result, temperature, isLogged] : answers) {
        const int fd = openSensor(text);
        value = kBefore;
        EXPECT_EQ(result, CPInterface::gettemp(value, fd)) << text;
        EXPECT_EQ(temperature, value) << text;
        const auto lines = syslog.lines();
        if (isLogged) {
            EXPECT_THAT(lines, ElementsAre(debug("CPCardInterface: cannot read for: " + std::to_string(fd))));
        } else {
            EXPECT_THAT(lines, IsEmpty()) << text;
        }
    }
}

TEST_F(ThermalsTest, ASensorIsReadFromItsBeginningEveryTime) {
    const int fd = openSensor("21000\n");
    EXPECT_TRUE(CPInterface::gettemp(value, fd));
    PrivateWorld::write(pathOf(0, 1), "22000\n");
    EXPECT_TRUE(CPInterface::gettemp(value, fd));
    EXPECT_EQ(22000, value);
}

TEST_F(ThermalsTest, ASensorThatCannotBeReadIsLogged) {
    const Valen::Descriptor directory = Valen::Descriptor::open("/", O_RDONLY);
    EXPECT_FALSE(CPInterface::gettemp(value, directory.get()));
    EXPECT_EQ(kBefore, value);
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("CPCardInterface: cannot read for: " + std::to_string(directory.get()))));
}

TEST_F(ThermalsTest, DescriptorsBelowOneAreNone) {
    for (const int fd : {0, -1, -2}) {
        EXPECT_FALSE(CPInterface::gettemp(value, fd));
    }
    EXPECT_EQ(kBefore, value);
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(ThermalsTest, NumbersThatAreNoTemperatureAreNone) {
    EXPECT_EQ(std::nullopt, Valen::parseTemperature("2147483648"));
    EXPECT_EQ(std::nullopt, Valen::parseTemperature("-2147483649"));
    EXPECT_EQ(2147483647, Valen::parseTemperature("2147483647"));
    EXPECT_EQ(std::nullopt, Valen::parseTemperature("99999999999999999999"));
    EXPECT_EQ(std::nullopt, Valen::parseTemperature(""));
}

}  // namespace
