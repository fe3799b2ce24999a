#include "Tools/boardsim/Board/I2cDevices.h"

#include <gmock/gmock.h>
#include <linux/i2c-dev.h>

#include <array>
#include <stdexcept>

namespace {

using boardsim::ActingFile;
using boardsim::I2cChip;
using boardsim::I2cDescription;
using boardsim::I2cDevices;
using boardsim::parseFault;
using testing::ElementsAre;
using testing::HasSubstr;

I2cDescription description() {
    I2cDescription i2c;
    i2c.buses = {{3, "fan"}, {5, ""}};
    i2c.devices = {{3, 0x48, I2cChip::TemperatureSensor, "fan_temp", 400, ""},
                   {3, 0x50, I2cChip::Eeprom, "eeprom", 0, "abc"},
                   {5, 0x3E, I2cChip::Expander, "leds", 0, ""},
                   {5, 0x2A, I2cChip::VideoEncoder, "", 0, ""}};
    return i2c;
}

class I2cDevicesTest : public testing::Test {
protected:
    std::string complaintAbout(const std::string& fault) {
        try {
            devices.apply(parseFault(fault));
        } catch (const std::invalid_argument& refusal) {
            return refusal.what();
        }
        return {};
    }

    /// Reads from the chip at `address` of the bus that is file number `bus`.
    std::errc poke(std::size_t bus, std::uint8_t address, std::span<std::byte> into) {
        const boardsim::FileCalls calls = devices.files().at(bus).open();
        calls.ioctl({0, I2C_SLAVE_FORCE, address});
        return calls.read(0, into).error;
    }

    I2cDevices devices{description()};
    std::array<std::byte, 2> bytes{};
};

TEST_F(I2cDevicesTest, EachBusAndEachEepromIsAFile) {
    std::vector<std::string> paths;
    for (const ActingFile& file : devices.files()) {
        paths.push_back(file.path);
    }
    EXPECT_THAT(paths, ElementsAre("/dev/i2c-3", "/dev/i2c-5", "/sys/bus/i2c/devices/3-0050/eeprom"));
}

TEST_F(I2cDevicesTest, SensorsFeelWhatIsDescribed) {
    EXPECT_EQ(std::errc{}, poke(0, 0x48, bytes));
    EXPECT_EQ(std::byte{25}, bytes[0]);
}

TEST_F(I2cDevicesTest, AChipWithADriverIsNotToBeChosen) {
    const boardsim::FileCalls first = devices.files()[0].open();
    const boardsim::FileCalls second = devices.files()[1].open();
    EXPECT_EQ(std::errc::device_or_resource_busy, first.ioctl({0, I2C_SLAVE, 0x50}).error);
    EXPECT_EQ(std::errc{}, first.ioctl({0, I2C_SLAVE, 0x48}).error);
    EXPECT_EQ(std::errc{}, second.ioctl({0, I2C_SLAVE, 0x50}).error);
}

TEST_F(I2cDevicesTest, ChipsAndBusesHaveSeveralNames) {
    const char* const faults[] = {"i2c:fan_temp:nack:times=1", "i2c:fan@0x48:nack:times=1",
                                  "i2c:i2c-3@72:nack:times=1", "i2c:fan:nack:times=1",
                                  "i2c:i2c-3:nack:times=1"};
    for (const char* fault : faults) {
        EXPECT_TRUE(devices.apply(parseFault(fault)));
        EXPECT_EQ(std::errc::no_such_device_or_address, poke(0, 0x48, bytes)) << fault;
        EXPECT_EQ(std::errc{}, poke(0, 0x48, bytes)) << fault;
    }
}

TEST_F(I2cDevicesTest, PowerIsLostOnceUnlessToldOtherwise) {
    const boardsim::FileCalls bus = devices.files()[1].open();
    bus.ioctl({0, I2C_SLAVE, 0x2A});
    const std::array set{std::byte{0}, std::byte{9}};
    const std::array choose{std::byte{0}};
    const auto value = [&] {
        bus.write(0, choose);
        bus.read(0, std::span(bytes).first(1));
        return std::to_integer<int>(bytes[0]);
    };
    EXPECT_TRUE(devices.apply(parseFault("i2c:i2c-5@0x2a:power-loss:after=1")));
    bus.write(0, set);
    EXPECT_EQ(0, value());
    bus.write(0, set);
    EXPECT_EQ(9, value());
}

struct ComplaintRow {
    const char* fault;
    const char* text;
};

TEST_F(I2cDevicesTest, FaultsThatCannotBeAreRefused) {
    const ComplaintRow rows[] = {
        {"i2c:nobody:nack", "no such chip and no such bus"},
        {"i2c::@0x48", "want KIND:DEVICE:ACTION"},
        {"i2c:fan@0x49:nack", "no chip at this address"},
        {"i2c:fan@0x80:nack", "from 0 to 0x7f"},
        {"i2c:fan@:nack", "from 0 to 0x7f"},
        {"i2c:fan_temp:explode", "a chip can nack"},
        {"i2c:fan_temp:nack=3", "nack has no value"},
        {"i2c:fan_temp:power-loss=3", "power-loss has no value"},
        {"i2c:fan_temp:value=256", "from 0 to 255"},
        {"i2c:fan_temp:celsius=128", "celsius wants a temperature"},
        {"i2c:fan_temp:celsius=nan", "celsius wants a temperature"},
        {"i2c:fan_temp:celsius=warm", "celsius wants a temperature"},
        {"i2c:leds:celsius=25", "a temperature sensor celsius=DEGREES"},
        {"i2c:fan_temp:pins=0", "an expander pins=WORD"},
        {"i2c:leds:pins=0x10000", "from 0 to 65535"},
        {"i2c:fan:power-loss", "a chip can"},
    };
    for (const ComplaintRow& row : rows) {
        EXPECT_THAT(complaintAbout(row.fault), HasSubstr(row.text)) << row.fault;
    }
}

TEST_F(I2cDevicesTest, FaultsOfOtherKindsAreNotItsAffair) {
    EXPECT_FALSE(devices.apply(parseFault("w1:fan_temp:nack")));
    EXPECT_FALSE(I2cDevices(I2cDescription{}).apply(parseFault("i2c:fan_temp:nack")));
}

TEST_F(I2cDevicesTest, ReadsAreRepeatable) {
    std::vector<std::pair<std::string, bool>> told;
    devices.listen(
        [&](std::string_view event, bool isRepeatable) { told.emplace_back(event, isRepeatable); });
    poke(0, 0x48, std::span(bytes).first(1));
    const boardsim::FileCalls bus = devices.files()[1].open();
    bus.ioctl({0, I2C_SLAVE, 0x3E});
    bus.write(0, std::array{std::byte{0x0F}, std::byte{0xF8}});
    EXPECT_THAT(told, ElementsAre(std::pair<std::string, bool>("i2c-3 0x48 read 0x19", true),
                                  std::pair<std::string, bool>("i2c-5 0x3e write 0x0f 0xf8", false)));
}

TEST(I2cDescriptionTest, ChipsAreCalledAsTheKernelDoes) {
    boardsim::I2cDevice chip;
    chip.bus = 12;
    chip.address = 0x1A;
    EXPECT_EQ("12-001a", chip.kernelName());
    EXPECT_EQ("/sys/bus/i2c/devices/12-001a", chip.directory());
}

}  // namespace
