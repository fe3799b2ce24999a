#include "Vl/HAL/Chips/W1Temp.h"

#include <cerrno>
#include <climits>
#include <filesystem>
#include <string>

#include "Tests/HAL/Chips/W1SensorWorld.h"

namespace {

using namespace std::chrono_literals;
using std::string_literals::operator""s;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Valen::HAL::W1Temp;

constexpr unsigned int kAny = 0x80000000;

class W1TempTest : public W1SensorWorld {};

TEST_F(W1TempTest, ASingleSensorWithTheUserDataIsOpened) {
    addSensor(1, kName, "\x05\x01"s, "\x50\x00\x00\x00"s);
    addSensor(1, "22-000000000001", "\x06\x01"s, "");
    addSensor(1, "28-000000000002", "\x05\x01"s, "");
    const auto sensor = makeSensor(0x105);
    EXPECT_EQ(kId, sensor->id().value);
    EXPECT_TRUE(sensor->isOpen());
    EXPECT_EQ(kUnknown, sensor->temperature());
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(W1TempTest, WithoutAMatchNothingIsOpened) {
    addSensor(1, kName, "\x05\x00"s, "");
    const auto sensor = makeSensor(6);
    EXPECT_EQ(0U, sensor->id().value);
    EXPECT_FALSE(sensor->isOpen());
    EXPECT_THAT(logged(), ElementsAre(debug("CPCardInterface: found 0 matching w1 temp of type 6")));
}

TEST_F(W1TempTest, AnyUserDataWillDo) {
    addSensor(1, kName, "\xFF\xFF"s, "");
    EXPECT_TRUE(makeSensor(kAny)->isOpen());
}

TEST_F(W1TempTest, ANegativeValueMeansAnyUserDataButItsComplement) {
    addSensor(1, kName, "\x05\x00"s, "");
    const auto sensor = makeSensor(static_cast<unsigned int>(~5));
    EXPECT_FALSE(sensor->isOpen());
    EXPECT_THAT(logged(), ElementsAre(debug("CPCardInterface: tried to match 1A2B3C2200 5 != 5"),
                                      debug("CPCardInterface: found 0 matching w1 temp of type FFFFFFFA")));
    const auto other = makeSensor(static_cast<unsigned int>(~6));
    EXPECT_TRUE(other->isOpen());
    EXPECT_THAT(logged(), ElementsAre(debug("CPCardInterface: tried to match 1A2B3C2200 6 != 5")));
}

TEST_F(W1TempTest, AmongSeveralTheSelectionDecides) {
    for (const char* serial : {"2", "1", "3"}) {
        addSensor(1, std::string("22-00000000000") + serial, "\0\0"s, "");
    }
    const auto lowest = makeSensor(0, 1);
    EXPECT_EQ(0x12200U, lowest->id().value);
    EXPECT_TRUE(lowest->isOpen());
    EXPECT_THAT(logged(), ElementsAre(debug("CPCardInterface: found 3 matching w1 temp, selected "
                                            "/sys/bus/w1/devices/22-000000000001/temp by evade: 1")));
    const auto highest = makeSensor(0, -7);
    EXPECT_EQ(0x32200U, highest->id().value);
    EXPECT_THAT(logged(), ElementsAre(debug("CPCardInterface: found 3 matching w1 temp, selected "
                                            "/sys/bus/w1/devices/22-000000000003/temp by evade: -7")));
    const auto none = makeSensor(0, 0);
    EXPECT_FALSE(none->isOpen());
    EXPECT_NE(0U, none->id().value);
    EXPECT_THAT(logged(), ElementsAre(debug("CPCardInterface: found 3 matching w1 temp of type 0")));
}

TEST_F(W1TempTest, ASlaveWhoseUserDataCannotBeReadTenTimesIsTakenForDead) {
    addSensor(1, kName, "\x05"s, "");
    const auto sensor = makeSensor(kAny);
    EXPECT_FALSE(sensor->isOpen());
    EXPECT_THAT(faults.sleeps, SizeIs(9));
    EXPECT_THAT(faults.sleeps, Each(50ms));
    EXPECT_THAT(logged(),
                ElementsAre(debug("CPCardInterface: failed reading userdata from /sys/bus/w1/devices/"
                                  "22-0000001a2b3c/user, assume that device is dead!!"),
                            debug("CPCardInterface: found 0 matching w1 temp of type 80000000")));
}

TEST_F(W1TempTest, UserDataThatCanBeReadTheTenthTimeCount) {
    addSensor(1, kName, "\x05\x00"s, "");
    const auto sensor = makeSensor(5);
    faults.reads = {-EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO};
    sensor->Find();
    EXPECT_TRUE(sensor->isOpen());
    EXPECT_THAT(faults.sleeps, SizeIs(9));
}

TEST_F(W1TempTest, AFileThatCannotBeOpenedIsLogged) {
    addSlave(1, kName);
    support::PrivateWorld::write(busDirectory(1) / kName / "user", "\0\0"s);
    const auto sensor = makeSensor(0);
    EXPECT_FALSE(sensor->isOpen());
    EXPECT_EQ(kId, sensor->id().value);
    const auto lines = logged();
    ASSERT_EQ(1U, lines.size());
    EXPECT_THAT(
        lines[0].text,
        testing::StartsWith("CPCardInterface: could not open /sys/bus/w1/devices/22-0000001a2b3c/temp"));
}

TEST_F(W1TempTest, AReadingIsFourBytesLittleEndian) {
    addSensor(1, kName, "\0\0"s, "\x50\x05\x00\x00"s);
    const auto sensor = makeSensor(0);
    EXPECT_EQ(W1Temp::Updated, sensor->updatetemp());
    EXPECT_EQ(0x550, sensor->temperature());
    setTemperature(kName, "\xFE\xFF\xFF\xFF more");
    EXPECT_EQ(W1Temp::Updated, sensor->updatetemp());
    EXPECT_EQ(-2, sensor->temperature());
}

TEST_F(W1TempTest, AllOnesAreNoReadingAndKeepTheTemperature) {
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    const auto sensor = makeSensor(0);
    sensor->updatetemp();
    setTemperature(kName, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(W1Temp::Invalid, sensor->updatetemp());
    EXPECT_EQ(0x50, sensor->temperature());
    EXPECT_TRUE(sensor->isOpen());
}

TEST_F(W1TempTest, AShortReadingClosesTheFileAndTheNextForgetsTheTemperature) {
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    const auto sensor = makeSensor(0);
    sensor->updatetemp();
    setTemperature(kName, "\1\2\3");
    EXPECT_EQ(W1Temp::Failed, sensor->updatetemp());
    EXPECT_FALSE(sensor->isOpen());
    EXPECT_EQ(0x50, sensor->temperature());
    EXPECT_EQ(W1Temp::Failed, sensor->updatetemp());
    EXPECT_EQ(kUnknown, sensor->temperature());
}

TEST_F(W1TempTest, ASensorThatIsUnpluggedWhileBeingReadIsClosed) {
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    const auto sensor = makeSensor(0);
    faults.beforeRead = [] { removeSlave(1, kName); };
    faults.reads = {-ENODEV};
    EXPECT_EQ(W1Temp::Failed, sensor->updatetemp());
    EXPECT_FALSE(sensor->isOpen());
    faults.beforeRead = nullptr;
    sensor->Fail();
    EXPECT_EQ(0U, sensor->id().value);
    addSensor(1, kName, "\0\0"s, "\x51\0\0\0"s);
    sensor->Fail();
    EXPECT_EQ(kId, sensor->id().value);
    EXPECT_EQ(W1Temp::Updated, sensor->updatetemp());
    EXPECT_EQ(0x51, sensor->temperature());
}

TEST_F(W1TempTest, FailForgetsTheTemperatureAndLooksForTheSensorAnew) {
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    const auto sensor = makeSensor(0);
    sensor->updatetemp();
    removeSlave(1, kName);
    addSensor(1, "22-000000000001", "\0\0"s, "\x51\0\0\0"s);
    sensor->Fail();
    EXPECT_EQ(kUnknown, sensor->temperature());
    EXPECT_EQ(0x12200U, sensor->id().value);
}

TEST_F(W1TempTest, FindingAnewLeavesNoDescriptor) {
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    const int before = openDescriptors();
    {
        const auto sensor = makeSensor(0);
        for (int time = 0; time < 10; ++time) {
            sensor->Fail();
        }
        EXPECT_EQ(before + 1, openDescriptors());
    }
    EXPECT_EQ(before, openDescriptors());
}

}  // namespace
