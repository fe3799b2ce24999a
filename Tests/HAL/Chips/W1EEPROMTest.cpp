#include "Vl/HAL/Chips/W1EEPROM.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "Tests/HAL/Bus/W1World.h"

namespace {

using namespace std::chrono_literals;
using std::string_literals::operator""s;
using support::PrivateWorld;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Valen::HaldenSerial;
using Valen::Version;
using Valen::HAL::W1EEPROM;
using Valen::HAL::W1ProdData;
namespace ProtectedFile = Valen::ProtectedFile;

constexpr Valen::HAL::W1Util::W1Handle kHandle{0x1a2b3c'2d00};
const std::string kName = "2d-0000001a2b3c";
const std::string kFile = "/sys/bus/w1/devices/" + kName + "/eeprom";

// The serial 4006381333931, made and serviced at the times 1 and 2, and its record.
const HaldenSerial kSerial{4006381333931, 1, 2};
const std::string kSerialBytes = "\xAB\xAD\xEF\xCE\xA4\x03\0\0\1\0\0\0\2\0\0\0"s;

unsigned int crcOf(std::string_view bytes) {
    unsigned int crc = 0;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned int>(static_cast<unsigned char>(byte)) << 8;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 0x8000) != 0 ? crc << 1 ^ 0x1021 : crc << 1;
        }
        crc &= 0xFFFF;
    }
    return crc;
}

std::string record(const std::string& data) {
    const unsigned int crc = crcOf(data);
    return std::string{static_cast<char>(crc >> 8), static_cast<char>(crc & 0xFF)} + data;
}

/// A version of card type 80.
const std::string kVersionBytes = "\3\2\1\x80\4\0\xB1\x30\0\0\0\0"s;
const std::string kIdentity = record(kSerialBytes) + record(kVersionBytes) + std::string(96, '\xFF');

class W1EEPROMTest : public W1World {
protected:
    W1EEPROMTest() {
        logUpTo(Valen::Log::SeverityLevel::DEBUG);
        faults.onSleep = [this] { collect(); };
    }

    void collect() {
        for (const auto& line : syslog.lines()) {
            lines.push_back(line);
        }
    }
    std::vector<support::LogLine> logged() {
        collect();
        return lines;
    }

    support::FileFaults faults{"/sys/bus/w1/"};
    std::vector<support::LogLine> lines;  ///< read while they come, for the log holds few
    W1EEPROM eeprom{kHandle};
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

TEST_F(W1EEPROMTest, AWriteLeavesWhatLiesElsewhereInTheEepromAsItIs) {
    faults.keepsContents = true;
    PrivateWorld::write(kFile, std::string(64, 'x'));
    EXPECT_TRUE(eeprom.WriteEEPROMPart("data", 4, 0x20));
    EXPECT_EQ(std::string(32, 'x') + record("data") + std::string(26, 'x'), PrivateWorld::read(kFile));
}

TEST_F(W1EEPROMTest, NoDataMakeARecordOfItsCrcAlone) {
    PrivateWorld::write(kFile, "");
    EXPECT_TRUE(eeprom.WriteEEPROMPart(nullptr, 0, 0));
    EXPECT_EQ("\0\0"s, PrivateWorld::read(kFile));
}

TEST_F(W1EEPROMTest, TenFailedWritesAreLoggedAndGivenUp) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    EXPECT_FALSE(eeprom.WriteEEPROMPart("\1\0\0\0\2\0\0\0\3\0\0\0\4\0\0\0", 16, 0x20));  // no such slave
    std::vector<support::LogLine> expected(
        10, error("CPCardInterface: readback failed: 00000001 00000002 00000003 00000004"));
    expected.push_back(error("CPCardInterface: writing w1 eeprom @ 20 failed!"));
    EXPECT_EQ(expected, logged());
    EXPECT_THAT(faults.sleeps, SizeIs(9));
    EXPECT_THAT(faults.sleeps, Each(50ms));
}

TEST_F(W1EEPROMTest, AWriteThatFailsNineTimesAndThenGoesWellIsASuccess) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    PrivateWorld::write(kFile, "");
    faults.writes.assign(9, -EIO);  // the placeholder of each
    EXPECT_TRUE(eeprom.WriteEEPROMPart("data", 4, 0));
    EXPECT_THAT(logged(), SizeIs(9));
}

TEST_F(W1EEPROMTest, ShortDataAreLoggedWithZerosBehindThem) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    eeprom.WriteEEPROMPart("\x11\x22\x33", 3, 0);
    EXPECT_EQ(error("CPCardInterface: readback failed: 00332211 00000000 00000000 00000000"),
              logged().front());
}

TEST_F(W1EEPROMTest, ADeviceThatKeepsOtherBytesFailsTheReadback) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    PrivateWorld::write(kFile, "");
    std::filesystem::permissions(kFile, std::filesystem::perms::owner_read);
    faults.beforeRead = [] { PrivateWorld::write(kFile, record("else")); };
    EXPECT_FALSE(eeprom.WriteEEPROMPart("data", 4, 0));
    EXPECT_THAT(logged(), SizeIs(11));
}

TEST_F(W1EEPROMTest, PowerLostAfterAnyByteLeavesTheWholeRecordOrNone) {
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

TEST_F(W1EEPROMTest, PowerLostOverAnOlderRecordNeverMixesTheTwo) {
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

TEST_F(W1EEPROMTest, AReadThatEndsShortGoesOnWhereItStopped) {
    PrivateWorld::write(kFile, record(kSerialBytes));
    ProtectedFile::In in(kFile.c_str(), 0);
    // The CRC; then five bytes and the end of the file, three and an error, the rest.
    faults.reads = {2, 5, 0, 3, -EIO};
    std::string data(16, '?');
    EXPECT_TRUE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, true));
    EXPECT_EQ(kSerialBytes, data);
    EXPECT_THAT(faults.sleeps, ElementsAre(10ms, 10ms));
}

TEST_F(W1EEPROMTest, AReadIsContinuedTenTimesAndThenGivenUp) {
    PrivateWorld::write(kFile, record(kSerialBytes));
    ProtectedFile::In in(kFile.c_str(), 0);
    std::string data(16, '?');
    faults.reads = {2, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO};
    EXPECT_TRUE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, true));
    EXPECT_THAT(faults.sleeps, SizeIs(10));
    faults.reads = {2, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO, -EIO};
    EXPECT_FALSE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, true));
    EXPECT_THAT(faults.sleeps, SizeIs(20));
    EXPECT_THAT(faults.reads, IsEmpty());
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(W1EEPROMTest, AFileThatIsTooShortIsGivenUp) {
    PrivateWorld::write(kFile, record(kSerialBytes).substr(0, 17));
    ProtectedFile::In in(kFile.c_str(), 0);
    std::string data(16, '?');
    EXPECT_FALSE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, false));
    EXPECT_THAT(faults.sleeps, SizeIs(10));
}

TEST_F(W1EEPROMTest, AnInvalidHandleAndAnUnreadableCrcFailAtOnce) {
    char byte = 0;
    PrivateWorld::write(kFile, "x");
    ProtectedFile::In tooShort(kFile.c_str(), 0);
    EXPECT_FALSE(eeprom.faultTolerantRead(kFile.c_str(), &byte, 1, tooShort, true));
    PrivateWorld::write(kFile, record("x"));
    ProtectedFile::In in(kFile.c_str(), 0);
    faults.reads = {-EIO};
    EXPECT_FALSE(eeprom.faultTolerantRead(kFile.c_str(), &byte, 1, in, true));
    EXPECT_FALSE(in.isValid());
    EXPECT_THAT(faults.sleeps, IsEmpty());
}

TEST_F(W1EEPROMTest, AWrongCrcIsLoggedAndClearsTheLastByteOfTheFile) {
    PrivateWorld::write(kFile, "\x12\x34"s + kSerialBytes + "xyz");
    ProtectedFile::In in(kFile.c_str(), 0);
    std::string data(16, '?');
    EXPECT_FALSE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, true));
    EXPECT_EQ("\x12\x34"s + kSerialBytes + "xy\0"s, PrivateWorld::read(kFile));
    char expected[128];
    std::snprintf(expected, sizeof expected,
                  "CPCardInterface: w1 crc failed exp: 1234, calc: %X: 16 bytes: CEEFADAB 000003A4 00000001 "
                  "00000002",
                  crcOf(kSerialBytes));
    EXPECT_THAT(logged(), ElementsAre(debug(expected)));
}

TEST_F(W1EEPROMTest, WithoutTheCheckAnyCrcWillDo) {
    PrivateWorld::write(kFile, "\x12\x34"s + kSerialBytes);
    ProtectedFile::In in(kFile.c_str(), 0);
    std::string data(8, '?');
    EXPECT_TRUE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 8, in, false));
    EXPECT_EQ(kSerialBytes.substr(0, 8), data);
    EXPECT_EQ("\x12\x34"s + kSerialBytes, PrivateWorld::read(kFile));
}

TEST_F(W1EEPROMTest, ARecordCanBeReadAgainAndAgain) {
    PrivateWorld::write(kFile, record(kSerialBytes));
    ProtectedFile::In in(kFile.c_str(), 0);
    for (int time = 0; time < 3; ++time) {
        std::string data(16, '?');
        EXPECT_TRUE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, true));
        EXPECT_EQ(kSerialBytes, data);
    }
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

TEST_F(W1EEPROMTest, ClearingTheCacheWritesAZeroOverTheLastByte) {
    PrivateWorld::write(kFile, "abc");
    eeprom.clearCache();
    EXPECT_EQ("ab\0"s, PrivateWorld::read(kFile));
    PrivateWorld::write(kFile, "");
    W1EEPROM::clearCache(kFile.c_str());
    EXPECT_EQ("", PrivateWorld::read(kFile));
    W1EEPROM::clearCache("/sys/bus/w1/missing");
    EXPECT_FALSE(std::filesystem::exists("/sys/bus/w1/missing"));
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
    EXPECT_TRUE(other.match(kHandle, W1EEPROM::kAnyCardType));
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
