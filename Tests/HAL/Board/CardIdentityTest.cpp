// The identity ROM, read and written through its device.
#include <fcntl.h>
#include <stdlib.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "Tests/HAL/Board/RomImage.h"
#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Vl/Common/Identity/HaldenSerial.h"
#include "Vl/Common/Identity/MACAddress.h"
#include "Vl/Common/Identity/Version.h"

namespace {

using std::string_literals::operator""s;
using support::PrivateWorld;
using testing::IsEmpty;
using Valen::HaldenSerial;
using Valen::MACAddress;
using Valen::Version;
using Valen::BinaryData::MACAddressType;

constexpr const char* kRom = "/dev/bootrom";
const auto kFirst = static_cast<MACAddressType>(0);
const auto kSecond = static_cast<MACAddressType>(1);
const Version kVersion{{0x80010203, 0x30B10004, 0}};
const HaldenSerial kSerial{4006381333931, 1, 2};

class CardIdentityTest : public BoardWorld {
protected:
    CardIdentityTest() {
        setenv("TZ", "UTC", 1);
        tzset();
        syslog.lines();  // what the bare board misses
        logUpTo(Valen::Log::SeverityLevel::DEBUG);
    }

    static void writeRom(const RomImage& image = {}) { PrivateWorld::write(kRom, image.bytes()); }
    /// A ROM that cannot be searched: a pipe.
    void makeRomAPipe() {
        ASSERT_EQ(0, pipe2(pipe_.data(), O_CLOEXEC));
        std::filesystem::create_symlink("/proc/self/fd/" + std::to_string(pipe_[0]), kRom);
    }
    ~CardIdentityTest() override {
        for (const int descriptor : pipe_) {
            close(descriptor);
        }
    }

    /// Replaces the ROM.
    void putInTheWay(const std::string& kind) {
        std::filesystem::remove(kRom);
        if (kind == "pipe") {
            makeRomAPipe();
        } else if (kind == "empty") {
            PrivateWorld::write(kRom, "");
        } else if (kind == "directory") {
            PrivateWorld::makeDirectory(kRom);
        } else if (kind == "full") {
            std::filesystem::create_symlink("/dev/full", kRom);
        }
    }

    static std::vector<support::LogLine> errors(const std::vector<std::string>& texts) {
        std::vector<support::LogLine> lines;
        for (const std::string& text : texts) {
            lines.push_back(error("CPCardInterface: " + text));
        }
        return lines;
    }

    TestBoard board;

private:
    std::array<int, 2> pipe_{-1, -1};
};

TEST_F(CardIdentityTest, EveryAddressIsReadFromItsPlace) {
    writeRom();
    MACAddress address;
    EXPECT_TRUE(board.getMAC(kFirst, address));
    EXPECT_EQ(MACAddress("02:00:5E:01:02:03"), address);
    EXPECT_TRUE(board.getMAC(kSecond, address));
    EXPECT_EQ(MACAddress("02:00:5E:01:02:04"), address);
    EXPECT_THAT(syslog.lines(), IsEmpty());
    EXPECT_EQ(0, descriptorsOn(kRom));
}

TEST_F(CardIdentityTest, EveryAddressIsWrittenToItsPlace) {
    writeRom();
    EXPECT_TRUE(board.setMAC(kFirst, MACAddress("01:23:45:67:89:AB")));
    EXPECT_EQ((RomImage{.firstMac = "\x01\x23\x45\x67\x89\xAB"}.bytes()), PrivateWorld::read(kRom));
    writeRom();
    EXPECT_TRUE(board.setMAC(kSecond, MACAddress("01:23:45:67:89:AB")));
    EXPECT_EQ((RomImage{.secondMac = "\x01\x23\x45\x67\x89\xAB"}.bytes()), PrivateWorld::read(kRom));
}

TEST_F(CardIdentityTest, TheCardsIdentityIsVersionAndSerial) {
    writeRom();
    Version version;
    HaldenSerial serial;
    EXPECT_TRUE(board.getCardID(version, serial));
    EXPECT_EQ(kVersion, version);
    EXPECT_EQ(kSerial, serial);
}

TEST_F(CardIdentityTest, TheLastWordOfTheVersionCountsOnlyWithItsTopBit) {
    Version version;
    HaldenSerial serial;
    writeRom({.version = RomImage().version.substr(0, 8) + "\xFF\xFF\xFF\x7F"});
    EXPECT_TRUE(board.getCardID(version, serial));
    EXPECT_EQ(0U, version.words[2]);
    writeRom({.version = RomImage().version.substr(0, 8) + "\x01\x00\x02\x80"s});
    EXPECT_TRUE(board.getCardID(version, serial));
    EXPECT_EQ(0x80020001U, version.words[2]);
}

TEST_F(CardIdentityTest, AnIdentityThatEndsEarlyChangesNothing) {
    PrivateWorld::write(kRom, RomImage().bytes().substr(0, 55));
    Version version{{1, 2, 3}};
    HaldenSerial serial{4, 5, 6};
    EXPECT_FALSE(board.getCardID(version, serial));
    EXPECT_EQ((Version{{1, 2, 3}}), version);
    EXPECT_EQ((HaldenSerial{4, 5, 6}), serial);
    EXPECT_EQ(errors({"transfered only 15 / 16 bytes"}), syslog.lines());
}

TEST_F(CardIdentityTest, TheVersionAndTheSerialAreWrittenToTheirPlaces) {
    writeRom({.version = std::string(12, 'v'), .serial = std::string(16, 's')});
    EXPECT_TRUE(board.SetCardID(kVersion));
    EXPECT_EQ((RomImage{.serial = std::string(16, 's')}.bytes()), PrivateWorld::read(kRom));
    EXPECT_TRUE(board.SetHaldenSerial(kSerial));
    EXPECT_EQ(RomImage().bytes(), PrivateWorld::read(kRom));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CardIdentityTest, TheRomIsNeverCreated) {
    EXPECT_FALSE(board.SetCardID(kVersion));
    EXPECT_FALSE(std::filesystem::exists(kRom));
}

TEST_F(CardIdentityTest, AHealthyRomHoldsAnIdentity) {
    writeRom();
    EXPECT_TRUE(board.checkROMData());
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CardIdentityTest, CardType81IsAnInvalidVersion) {
    writeRom({.version = "\x03\x02\x01\x81\x04\x00\xB1\x30\x00\x00\x00\x00"s});
    EXPECT_FALSE(board.checkROMData());
    EXPECT_EQ(errors({"invalid version: CT: 0x81 Ver: 0102.03.0004 (17/05/2024)", "invalid ROM data"}),
              syslog.lines());
}

TEST_F(CardIdentityTest, AnAddressOfSomebodyElsesIsInvalid) {
    writeRom({.firstMac = "\x00\x00\x5E\x01\x02\x03"s});
    EXPECT_FALSE(board.checkROMData());
    EXPECT_EQ(errors({"invalid MAC: 00:00:5E:01:02:03", "invalid ROM data"}), syslog.lines());
}

TEST_F(CardIdentityTest, ASerialWithAWrongCheckDigitIsInvalid) {
    writeRom({.serial = "\xAA\xAD\xEF\xCE\xA4\x03\x00\x00\x01\x00\x00\x00\x02\x00\x00\x00"s});
    EXPECT_FALSE(board.checkROMData());
    EXPECT_EQ(errors({"invalid serial: 4006381333930  Production Date: 01.01.1970 00:00:01  Last Service "
                      "Date: 01.01.1970 00:00:02",
                      "invalid ROM data"}),
              syslog.lines());
}

TEST_F(CardIdentityTest, WithoutARomThereIsNoIdentity) {
    EXPECT_FALSE(board.checkROMData());
    EXPECT_EQ(errors({"could not open rom file", "invalid ROM data"}), syslog.lines());
}

TEST_F(CardIdentityTest, ARomThatCannotBeSearchedIsNone) {
    makeRomAPipe();
    EXPECT_FALSE(board.checkROMData());
    EXPECT_EQ(errors({"could not seek 0 in rom file: Illegal seek", "invalid ROM data"}), syslog.lines());
}

TEST_F(CardIdentityTest, ARomThatEndsEarlyIsNone) {
    PrivateWorld::write(kRom, RomImage().bytes().substr(0, 40));
    EXPECT_FALSE(board.checkROMData());
    EXPECT_EQ(errors({"transfered only 40 / 56 bytes", "invalid ROM data"}), syslog.lines());
}

TEST_F(CardIdentityTest, ARomThatCannotBeReadIsNone) {
    PrivateWorld::makeDirectory(kRom);
    EXPECT_FALSE(board.checkROMData());
    EXPECT_EQ(errors({"transfered only -1 / 56 bytes", "invalid ROM data"}), syslog.lines());
}

/// What stands in the way of the ROM's operations, and what each of them says of it.
struct Obstacle {
    std::string kind;
    std::string ofMac;
    std::string ofVersion;
    std::string ofSerial;
};

TEST_F(CardIdentityTest, EveryReadingOperationSaysWhyItFailed) {
    const Obstacle obstacles[] = {
        {"nothing", "could not open rom file", "could not open rom file", ""},
        {"pipe", "could not seek 16 in rom file: Illegal seek", "could not seek 28 in rom file: Illegal seek",
         ""},
        {"empty", "transfered only 0 / 6 bytes", "transfered only 0 / 12 bytes", ""},
    };
    for (const auto& [kind, ofMac, ofVersion, unused] : obstacles) {
        putInTheWay(kind);
        Version version;
        HaldenSerial serial;
        MACAddress address;
        EXPECT_FALSE(board.getMAC(kFirst, address));
        EXPECT_FALSE(board.getCardID(version, serial));
        EXPECT_EQ(errors({ofMac, ofVersion}), syslog.lines()) << kind;
    }
}

TEST_F(CardIdentityTest, EveryWritingOperationSaysWhyItFailed) {
    const Obstacle obstacles[] = {
        {"nothing", "could not open rom file", "could not open rom file", "could not open rom file"},
        {"directory", "could not open rom file", "could not open rom file", "could not open rom file"},
        {"full", "transfered only -1 / 6 bytes", "transfered only -1 / 12 bytes",
         "transfered only -1 / 16 bytes"},
    };
    for (const auto& [kind, ofMac, ofVersion, ofSerial] : obstacles) {
        putInTheWay(kind);
        EXPECT_FALSE(board.setMAC(kFirst, {}));
        EXPECT_FALSE(board.SetCardID({}));
        EXPECT_FALSE(board.SetHaldenSerial({}));
        EXPECT_EQ(errors({ofMac, ofVersion, ofSerial}), syslog.lines()) << kind;
    }
}

TEST_F(CardIdentityTest, ATransferFromBeforeTheBeginningFails) {
    writeRom();
    char byte = 'x';
    EXPECT_FALSE(board.transferRom(-1, 1, &byte, false));
    EXPECT_EQ('x', byte);
    EXPECT_EQ(errors({"could not seek -1 in rom file: Invalid argument"}), syslog.lines());
}

TEST_F(CardIdentityTest, ATransferOfANegativeLengthFails) {
    writeRom();
    char byte = 'x';
    EXPECT_FALSE(board.transferRom(0, -1, &byte, false));
    EXPECT_EQ('x', byte);
    EXPECT_EQ(errors({"transfered only 0 / -1 bytes"}), syslog.lines());
}

}  // namespace
