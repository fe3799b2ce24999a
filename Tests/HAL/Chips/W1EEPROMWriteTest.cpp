#include <cerrno>
#include <string>

#include "Tests/HAL/Chips/W1EEPROMWorld.h"

namespace {

using namespace std::chrono_literals;
using std::string_literals::operator""s;
using support::PrivateWorld;
using testing::Each;
using testing::SizeIs;
using Valen::HaldenSerial;
using Valen::HAL::W1EEPROM;

class W1EEPROMWriteTest : public W1EEPROMWorld {};

TEST_F(W1EEPROMWriteTest, AWriteLeavesWhatLiesElsewhereInTheEepromAsItIs) {
    faults.keepsContents = true;
    PrivateWorld::write(kFile, std::string(64, 'x'));
    EXPECT_TRUE(eeprom.WriteEEPROMPart("data", 4, 0x20));
    EXPECT_EQ(std::string(32, 'x') + record("data") + std::string(26, 'x'), PrivateWorld::read(kFile));
}

TEST_F(W1EEPROMWriteTest, NoDataMakeARecordOfItsCrcAlone) {
    PrivateWorld::write(kFile, "");
    EXPECT_TRUE(eeprom.WriteEEPROMPart(nullptr, 0, 0));
    EXPECT_EQ("\0\0"s, PrivateWorld::read(kFile));
}

TEST_F(W1EEPROMWriteTest, TenFailedWritesAreLoggedAndGivenUp) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    EXPECT_FALSE(eeprom.WriteEEPROMPart("\1\0\0\0\2\0\0\0\3\0\0\0\4\0\0\0", 16, 0x20));  // no such slave
    std::vector<support::LogLine> expected(
        10, error("CPCardInterface: readback failed: 00000001 00000002 00000003 00000004"));
    expected.push_back(error("CPCardInterface: writing w1 eeprom @ 20 failed!"));
    EXPECT_EQ(expected, logged());
    EXPECT_THAT(faults.sleeps, SizeIs(9));
    EXPECT_THAT(faults.sleeps, Each(50ms));
}

TEST_F(W1EEPROMWriteTest, AWriteThatFailsNineTimesAndThenGoesWellIsASuccess) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    PrivateWorld::write(kFile, "");
    faults.writes.assign(9, -EIO);  // the placeholder of each
    EXPECT_TRUE(eeprom.WriteEEPROMPart("data", 4, 0));
    EXPECT_THAT(logged(), SizeIs(9));
}

TEST_F(W1EEPROMWriteTest, ShortDataAreLoggedWithZerosBehindThem) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    eeprom.WriteEEPROMPart("\x11\x22\x33", 3, 0);
    EXPECT_EQ(error("CPCardInterface: readback failed: 00332211 00000000 00000000 00000000"),
              logged().front());
}

TEST_F(W1EEPROMWriteTest, ARecordOfNothingThatFailsIsLoggedAsZeros) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    EXPECT_FALSE(eeprom.WriteEEPROMPart(nullptr, 0, 0));
    EXPECT_EQ(error("CPCardInterface: readback failed: 00000000 00000000 00000000 00000000"),
              logged().front());
}

TEST_F(W1EEPROMWriteTest, ADeviceThatKeepsOtherBytesFailsTheReadback) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    PrivateWorld::write(kFile, "");
    std::filesystem::permissions(kFile, std::filesystem::perms::owner_read);
    faults.beforeRead = [] { PrivateWorld::write(kFile, record("else")); };
    EXPECT_FALSE(eeprom.WriteEEPROMPart("data", 4, 0));
    EXPECT_THAT(logged(), SizeIs(11));
}

TEST_F(W1EEPROMWriteTest, PowerLostAfterAnyByteLeavesTheWholeRecordOrNone) {
    const long whole = static_cast<long>(2 + kSerialBytes.size() + 2);  // placeholder, data, CRC
    for (long written = 1; written <= whole; ++written) {
        SCOPED_TRACE(written);
        PrivateWorld::write(kFile, std::string(144, '\xFF'));
        faults.keepsContents = true;
        faults.bytesUntilPowerOff = written;
        EXPECT_FALSE(eeprom.WriteHaldenSerial(kSerial));
        faults.bytesUntilPowerOff = support::FileFaults::kPowerStaysOn;
        HaldenSerial serial;
        EXPECT_EQ(written == whole, W1EEPROM(kHandle).ReadHaldenSerial(serial, 3));
        EXPECT_EQ(written == whole ? kSerial : HaldenSerial(), serial);
        logged();
        EXPECT_TRUE(eeprom.WriteHaldenSerial(kSerial));
        EXPECT_TRUE(eeprom.ReadHaldenSerial(serial, 1));
    }
}

TEST_F(W1EEPROMWriteTest, PowerLostOverAnOlderRecordNeverMixesTheTwo) {
    const HaldenSerial old{9780201379624, 0x55667788, 0x11223344};
    PrivateWorld::write(kFile, "");
    for (const bool keepsContents : {false, true}) {
        for (long written = 1; written <= 20; ++written) {
            SCOPED_TRACE(written);
            faults.keepsContents = keepsContents;
            ASSERT_TRUE(eeprom.WriteHaldenSerial(old));
            faults.bytesUntilPowerOff = written;
            EXPECT_FALSE(eeprom.WriteHaldenSerial(kSerial));
            faults.bytesUntilPowerOff = support::FileFaults::kPowerStaysOn;
            HaldenSerial serial;
            EXPECT_EQ(written == 20, eeprom.ReadHaldenSerial(serial, 1));
            EXPECT_EQ(written == 20 ? kSerial : HaldenSerial(), serial);
            logged();
        }
    }
}

}  // namespace
