#include <cerrno>
#include <cstdio>
#include <string>

#include "Tests/HAL/Chips/W1EEPROMWorld.h"

namespace {

using namespace std::chrono_literals;
using std::string_literals::operator""s;
using support::PrivateWorld;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Valen::HAL::W1EEPROM;
namespace ProtectedFile = Valen::ProtectedFile;

class W1EEPROMReadTest : public W1EEPROMWorld {};

TEST_F(W1EEPROMReadTest, AReadThatEndsShortGoesOnWhereItStopped) {
    PrivateWorld::write(kFile, record(kSerialBytes));
    ProtectedFile::In in(kFile.c_str(), 0);
    // The CRC; then five bytes and the end of the file, three and an error, the rest.
    faults.reads = {2, 5, 0, 3, -EIO};
    std::string data(16, '?');
    EXPECT_TRUE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, true));
    EXPECT_EQ(kSerialBytes, data);
    EXPECT_THAT(faults.sleeps, ElementsAre(10ms, 10ms));
}

TEST_F(W1EEPROMReadTest, AReadIsContinuedTenTimesAndThenGivenUp) {
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

TEST_F(W1EEPROMReadTest, AFileThatIsTooShortIsGivenUp) {
    PrivateWorld::write(kFile, record(kSerialBytes).substr(0, 17));
    ProtectedFile::In in(kFile.c_str(), 0);
    std::string data(16, '?');
    EXPECT_FALSE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, false));
    EXPECT_THAT(faults.sleeps, SizeIs(10));
}

TEST_F(W1EEPROMReadTest, APowerThatGoesOffWhileItReadsIsGivenUpAtOnce) {
    PrivateWorld::write(kFile, record(kSerialBytes));
    ProtectedFile::In in(kFile.c_str(), 0);
    faults.beforeRead = [this] { faults.bytesUntilPowerOff = faults.readCount() == 2 ? 0 : -1; };
    std::string data(16, '?');
    EXPECT_FALSE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, false));
    EXPECT_EQ(3, faults.readCount());
    EXPECT_THAT(faults.sleeps, IsEmpty());
}

TEST_F(W1EEPROMReadTest, AnInvalidHandleAndAnUnreadableCrcFailAtOnce) {
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

TEST_F(W1EEPROMReadTest, AWrongCrcIsLoggedAndClearsTheLastByteOfTheFile) {
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

TEST_F(W1EEPROMReadTest, WithoutTheCheckAnyCrcWillDo) {
    PrivateWorld::write(kFile, "\x12\x34"s + kSerialBytes);
    ProtectedFile::In in(kFile.c_str(), 0);
    std::string data(8, '?');
    EXPECT_TRUE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 8, in, false));
    EXPECT_EQ(kSerialBytes.substr(0, 8), data);
    EXPECT_EQ("\x12\x34"s + kSerialBytes, PrivateWorld::read(kFile));
}

TEST_F(W1EEPROMReadTest, ARecordCanBeReadAgainAndAgain) {
    PrivateWorld::write(kFile, record(kSerialBytes));
    ProtectedFile::In in(kFile.c_str(), 0);
    for (int time = 0; time < 3; ++time) {
        std::string data(16, '?');
        EXPECT_TRUE(eeprom.faultTolerantRead(kFile.c_str(), data.data(), 16, in, true));
        EXPECT_EQ(kSerialBytes, data);
    }
}

TEST_F(W1EEPROMReadTest, ClearingTheCacheWritesAZeroOverTheLastByte) {
    PrivateWorld::write(kFile, "abc");
    eeprom.clearCache();
    EXPECT_EQ("ab\0"s, PrivateWorld::read(kFile));
    PrivateWorld::write(kFile, "");
    W1EEPROM::clearCache(kFile.c_str());
    EXPECT_EQ("", PrivateWorld::read(kFile));
    W1EEPROM::clearCache("/sys/bus/w1/missing");
    EXPECT_FALSE(std::filesystem::exists("/sys/bus/w1/missing"));
}

}  // namespace
