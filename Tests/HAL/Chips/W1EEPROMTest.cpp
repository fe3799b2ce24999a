#include "Vl/HAL/Chips/W1EEPROM.h"

#include <cerrno>
#include <string>

#include "Tests/HAL/Chips/W1EEPROMWorld.h"

namespace {

using namespace std::chrono_literals;
using std::string_literals::operator""s;
using support::PrivateWorld;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Valen::HaldenSerial;
using Valen::Version;
using Valen::HAL::W1EEPROM;
using Valen::HAL::W1ProdData;

class W1EEPROMTest : public W1EEPROMWorld {
protected:
    /// A version of card type 80.
    static inline const std::string kVersionBytes = "\3\2\1\x80\4\0\xB1\x30\0\0\0\0"s;
    static inline const std::string kIdentity =
        record(kSerialBytes) + record(kVersionBytes) + std::string(96, '\xFF');
};

TEST_F(W1EEPROMTest, TheSerialIsAProtectedRecordAtTheBeginning) {
    PrivateWorld::write(kFile, "");
    EXPECT_TRUE(eeprom.WriteHaldenSerial(kSerial));
    EXPECT_EQ(record(kSerialBytes), PrivateWorld::read(kFile));
    HaldenSerial serial;
    EXPECT_TRUE(eeprom.ReadHaldenSerial(serial, 1));
    EXPECT_EQ(kSerial, serial);
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_THAT(faults.sleeps, IsEmpty());
}

TEST_F(W1EEPROMTest, ReadingTheSerialSleepsBetweenFailedTries) {
    PrivateWorld::write(kFile, "\x12\x34"s + kSerialBytes + std::string(8, 'x'));
    HaldenSerial serial = kSerial;
    EXPECT_FALSE(eeprom.ReadHaldenSerial(serial, 3));
    EXPECT_EQ(kSerial, serial);
    EXPECT_THAT(faults.sleeps, ElementsAre(10ms, 10ms));
    EXPECT_FALSE(eeprom.ReadHaldenSerial(serial, 0));
}

TEST_F(W1EEPROMTest, ABlankSerialIsNoneAndTriedAgainAtOnce) {
    PrivateWorld::write(kFile, record(std::string(8, '\0') + "datedate"));
    HaldenSerial serial;
    EXPECT_FALSE(eeprom.ReadHaldenSerial(serial, 3));
    EXPECT_THAT(faults.sleeps, IsEmpty());
    // The constructor's CRC, then CRC and data of each of the three tries.
    EXPECT_EQ(7, faults.readCount());
}

TEST_F(W1EEPROMTest, ASerialThatIsThereAtTheSecondTryIsTaken) {
    PrivateWorld::write(kFile, record(kSerialBytes));
    faults.reads = {2, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    HaldenSerial serial;
    EXPECT_TRUE(eeprom.ReadHaldenSerial(serial, 2));
    EXPECT_EQ(kSerial, serial);
    EXPECT_THAT(faults.sleeps, SizeIs(11));
}

TEST_F(W1EEPROMTest, ProductionWritesTheSerialToAnyFileWithoutReadingItBack) {
    const W1ProdData data{kSerial, {}};
    EXPECT_TRUE(W1EEPROM::GWriteHaldenSerial(data, "/sys/bus/w1/new"));
    EXPECT_EQ(record(kSerialBytes), PrivateWorld::read("/sys/bus/w1/new"));
    EXPECT_EQ(0, faults.readCount());
    EXPECT_FALSE(W1EEPROM::GWriteHaldenSerial(data, "/sys/bus/w1/missing/new"));
    faults.writes = {2, 15, -EIO};
    EXPECT_FALSE(W1EEPROM::GWriteHaldenSerial(data, "/sys/bus/w1/new"));
}

TEST_F(W1EEPROMTest, ADeviceWithBothIdentityRecordsAndTheCardTypeMatches) {
    PrivateWorld::write(kFile, kIdentity);
    W1EEPROM other;
    EXPECT_TRUE(other.match(kHandle, 0x80));
    EXPECT_EQ(0x80U, other.version().cardType());
    EXPECT_EQ(4U, other.version().build());
    const auto cached = other.cached();
    EXPECT_EQ(kSerialBytes + kVersionBytes,
              std::string(reinterpret_cast<const char*>(cached.data()), cached.size()));
    EXPECT_EQ(0U, other.handle().value);
    EXPECT_TRUE(other.match(kHandle, -1));
    other.clearCache();
    EXPECT_TRUE(other.cached().empty());
}

TEST_F(W1EEPROMTest, WhatDoesNotMatchIsLogged) {
    const std::string wrongCrc = "\xFF\xFF"s + kIdentity.substr(2);
    const std::string noVersion = kIdentity.substr(0, 18) + "\xFF\xFF"s + kIdentity.substr(20);
    const struct {
        const char* what;
        std::string contents;
        int cardType;
        std::string text;
    } rows[] = {
        {"card type", kIdentity, 0x81, "tried to match 1A2B3C2D00 81 != 80"},
        {"length", kIdentity.substr(0, 31), 0x80, "impossible len: 31 (orig: 32)"},
        {"serial", wrongCrc, 0x80, "reading w1 eeprom 1A2B3C2D00 failed!"},
        {"version", noVersion, 0x80, "reading w1 eeprom 1A2B3C2D00 failed!"},
        {"blank", std::string(64, '\0'), 0, "reading w1 eeprom 1A2B3C2D00 failed!"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        PrivateWorld::write(kFile, row.contents);
        lines.clear();
        W1EEPROM other(kHandle, 1);
        EXPECT_FALSE(other.match(kHandle, row.cardType));
        EXPECT_EQ(debug("CPCardInterface: " + row.text), logged().back());
        EXPECT_EQ(Version{}, other.version());
        EXPECT_TRUE(other.cached().empty());
    }
    std::filesystem::remove(kFile);
    EXPECT_FALSE(eeprom.match(kHandle, 0x80));
    EXPECT_EQ(debug("CPCardInterface: cannot open /sys/bus/w1/devices/" + kName + "//eeprom "),
              logged().back());
}

TEST_F(W1EEPROMTest, TheFirstMatchingDeviceOfTheBusIsFound) {
    addBus(1);
    for (const char* name : {"2d-000000000001", "2d-000000000002", "28-000000000003"}) {
        addSlave(1, name);
        PrivateWorld::write(busDirectory(1) / name / "eeprom", kIdentity);
    }
    PrivateWorld::write(busDirectory(1) / "2d-000000000001" / "eeprom", "");
    W1EEPROM other;
    EXPECT_FALSE(other.findDevice(0x81, 1));
    EXPECT_EQ(0U, other.handle().value);
    EXPECT_TRUE(other.findDevice(0x80, 1));
    EXPECT_EQ(0x22d00U, other.handle().value);
    EXPECT_FALSE(other.findDevice(0x80, 2));
}

TEST_F(W1EEPROMTest, TakesOverWhatWasReadBefore) {
    const Version version{{0x80010203, 4, 0}};
    const W1EEPROM other("copy", 4, kHandle, version);
    EXPECT_EQ(version, other.version());
    EXPECT_EQ(kHandle, other.handle());
    EXPECT_EQ(4U, other.cached().size());
    EXPECT_EQ(std::byte{'c'}, other.cached()[0]);
    EXPECT_TRUE(W1EEPROM(nullptr, -1, kHandle, version).cached().empty());
}

TEST_F(W1EEPROMTest, NoDescriptorIsLeft) {
    const int before = openDescriptors();
    logUpTo(Valen::Log::SeverityLevel::EMERGENCY);
    PrivateWorld::write(kFile, kIdentity);
    HaldenSerial serial;
    eeprom.match(kHandle, 0x80);
    eeprom.ReadHaldenSerial(serial, 1);
    eeprom.WriteHaldenSerial(kSerial);
    faults.bytesUntilPowerOff = 7;
    eeprom.WriteHaldenSerial(kSerial);
    EXPECT_EQ(before, openDescriptors());
}

}  // namespace
