#include <limits>

#include "Tests/HAL/Board/VariantWorld.h"
#include "Vl/HAL/Board/OrcaInterface.h"

namespace {

using support::Read32;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::OrcaInterface;

constexpr int kUntouched = 12345;

class OrcaTemperaturesTest : public VariantWorld {
protected:
    int celsius = kUntouched;
    int limit = kUntouched;
};

TEST_F(OrcaTemperaturesTest, FindingTheRegistersIsLoggedForDebugging) {
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
    const OrcaInterface board(nullptr);
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("Cardcontroller: Core addr for pio_temp_fpga = 0x00003080"),
                            debug("Cardcontroller: Core addr for pio_temp_tile0 = 0x000030C0"),
                            debug("Cardcontroller: Core addr for pio_temp_tile1 = 0x00003100")));
}

TEST_F(OrcaTemperaturesTest, WhicheverRegisterIsMissingTheSameTextSaysSoOnPurpose) {
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
    removeCore("subsys_hps_pio_temp_tile0");
    const OrcaInterface board(nullptr);
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug("Cardcontroller: Core addr for pio_temp_fpga = 0x00003080"),
                            error("Cardcontroller: pio_temp_fpga not found!"),
                            debug("Cardcontroller: Core addr for pio_temp_tile1 = 0x00003100")));
}

TEST_F(OrcaTemperaturesTest, ARegisterHoldsDegreesAboveItsLowByte) {
    OrcaInterface board(nullptr);
    registers.set32(kFpgaTemperature, 0x00002AFF);
    registers.set32(kTile0Temperature, 0x00000B00);
    registers.set32(kTile1Temperature, 0xFFFFFF00);
    const struct {
        int which;
        int celsius;
        std::uint32_t address;
    } rows[] = {{0, 42, kFpgaTemperature}, {1, 11, kTile0Temperature}, {2, 0x00FFFFFF, kTile1Temperature}};
    for (const auto& row : rows) {
        registers.clearAccesses();
        limit = kUntouched;
        EXPECT_TRUE(board.getFPGATemperature(row.which, celsius, limit)) << row.which;
        EXPECT_EQ(row.celsius, celsius);
        EXPECT_EQ(95, limit);
        EXPECT_THAT(registers.accesses(), ElementsAre(Read32(row.address)));
    }
}

TEST_F(OrcaTemperaturesTest, ThereAreThreeRegisters) {
    OrcaInterface board(nullptr);
    for (const int which : {3, -1, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(board.getFPGATemperature(which, celsius, limit)) << which;
        EXPECT_EQ(kUntouched, celsius);
        EXPECT_EQ(kUntouched, limit);
    }
}

TEST_F(OrcaTemperaturesTest, AMissingRegisterStillTellsItsLimit) {
    removeCore("subsys_hps_pio_temp_tile0");
    OrcaInterface board(nullptr);
    EXPECT_FALSE(board.getFPGATemperature(1, celsius, limit));
    EXPECT_EQ(kUntouched, celsius);
    EXPECT_EQ(95, limit);
    EXPECT_TRUE(board.getFPGATemperature(0, celsius, limit));
    EXPECT_TRUE(board.getFPGATemperature(2, celsius, limit));
}

TEST_F(OrcaTemperaturesTest, WithoutTheFpgaItsRegistersAreMissing) {
    std::remove("/dev/fpga");
    OrcaInterface board(nullptr);
    for (const int which : {0, 1, 2}) {
        EXPECT_FALSE(board.getFPGATemperature(which, celsius, limit)) << which;
    }
    EXPECT_EQ(95, limit);
    EXPECT_THAT(syslog.lines(), IsEmpty()) << "the layout names them";
}

TEST_F(OrcaTemperaturesTest, ARegisterBehindTheEndOfTheFpgaIsMissing) {
    writeLayout("fpga", core("subsys_hps_pio_temp_fpga", {1, 0x00010000}));
    OrcaInterface board(nullptr);
    EXPECT_FALSE(board.getFPGATemperature(0, celsius, limit));
    EXPECT_EQ(95, limit);
}

TEST_F(OrcaTemperaturesTest, ARegisterIsReadOnceAndNoneFails) {
    const volatile Valen::orca_misc_pio_ctrl reg{0x00001980};
    EXPECT_TRUE(OrcaInterface::getTemperatureSerial(&reg, celsius));
    EXPECT_EQ(25, celsius);
    EXPECT_FALSE(OrcaInterface::getTemperatureSerial(nullptr, celsius));
    EXPECT_EQ(25, celsius);
}

struct Sensor {
    const char* name;
    bool (OrcaInterface::*get)(int& celsius, int& limit);
    int limit;
    int bus;
    int address;
};

constexpr Sensor kSensors[] = {
    {"sdi_temp", &OrcaInterface::getSDITemperature, 80, 7, 0x48},
    {"fan_radial_temp", &OrcaInterface::getFanTemperature, 60, 1, 0x49},
    {"fan_oled_temp", &OrcaInterface::getOledTemperature, 50, 1, 0x4A},
    {"eth_temp", &OrcaInterface::getETHTemperature, 75, 2, 0x4B},
};

std::string words(const char* format, int bus, int address) {
    char text[48];
    std::snprintf(text, sizeof text, format, bus, address);
    return text;
}

TEST_F(OrcaTemperaturesTest, EachSensorIsSelectedSetToTwelveBitsAndRead) {
    OrcaInterface board(nullptr);
    for (const Sensor& sensor : kSensors) {
        kernel.calls.clear();
        kernel.chips[{sensor.bus, sensor.address}][0] = 0xE7;
        EXPECT_TRUE((board.*sensor.get)(celsius, limit)) << sensor.name;
        EXPECT_EQ(-24, celsius);
        EXPECT_EQ(sensor.limit, limit);
        EXPECT_THAT(kernel.calls, ElementsAre(words("i2c-%d select %02x", sensor.bus, sensor.address),
                                              words("%d-%02x write8 01=60", sensor.bus, sensor.address),
                                              words("%d-%02x read16 00", sensor.bus, sensor.address)));
    }
}

TEST_F(OrcaTemperaturesTest, ASensorThatFailsStillTellsItsLimit) {
    OrcaInterface board(nullptr);
    for (const Sensor& sensor : kSensors) {
        for (const char* failing : {"i2c-%d select %02x", "%d-%02x write8", "%d-%02x read16"}) {
            kernel.failing = {words(failing, sensor.bus, sensor.address)};
            celsius = kUntouched;
            limit = kUntouched;
            EXPECT_FALSE((board.*sensor.get)(celsius, limit)) << sensor.name << failing;
            EXPECT_EQ(kUntouched, celsius);
            EXPECT_EQ(sensor.limit, limit);
        }
    }
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(OrcaTemperaturesTest, TheSdiSensorIsLookedUpOnceTheOthersEveryTime) {
    OrcaInterface board(nullptr);
    link("sdi_temp", "/sys/bus/i2c/devices/7-0011");
    link("fan_radial_temp", "/sys/bus/i2c/devices/1-0012");
    link("fan_oled_temp", "/sys/bus/i2c/devices/1-0013");
    link("eth_temp", "/sys/bus/i2c/devices/2-0014");
    kernel.calls.clear();
    for (const Sensor& sensor : kSensors) {
        (board.*sensor.get)(celsius, limit);
    }
    EXPECT_THAT(kernel.callsOf("i2c"),
                ElementsAre("i2c-7 select 48", "i2c-1 select 12", "i2c-1 select 13", "i2c-2 select 14"));
}

TEST_F(OrcaTemperaturesTest, AnUnregisteredSensorOrBusFails) {
    for (const char* name : {"sdi_temp", "fan", "syn_eth"}) {
        unlink(name);
    }
    OrcaInterface board(nullptr);
    EXPECT_THAT(syslog.lines(), IsEmpty());
    for (const Sensor& sensor : kSensors) {
        EXPECT_FALSE((board.*sensor.get)(celsius, limit)) << sensor.name;
        EXPECT_EQ(sensor.limit, limit);
    }
    EXPECT_EQ(kUntouched, celsius);
}

TEST_F(OrcaTemperaturesTest, ASensorWithoutAnAddressIsNotSelected) {
    OrcaInterface board(nullptr);
    unlink("eth_temp");
    kernel.failing = {"i2c-2 select ffffffff"};  // as the kernel does, which knows seven bits
    EXPECT_FALSE(board.getETHTemperature(celsius, limit));
    EXPECT_EQ(75, limit);
}

}  // namespace
