#include "Vl/HAL/Bus/SPISlave.h"

#include <filesystem>
#include <string>

#include "Tests/HAL/BoardWorld.h"

namespace {

namespace fs = std::filesystem;

using Valen::SPISlave;

const fs::path kCore = "/sys/bus/avalon/devices/oled_spi";
const fs::path kMasters = kCore / "spi_master";

class SPISlaveTest : public BoardWorld {
protected:
    SPISlaveTest() { fs::create_directories(kCore); }

    static fs::path firstListed(const fs::path& directory) {
        return fs::directory_iterator(directory)->path();
    }
};

TEST_F(SPISlaveTest, FindsTheDeviceBelowTheMaster) {
    fs::create_directories(kMasters / "spi1/spi1.0");
    EXPECT_EQ(kMasters / "spi1/spi1.0", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, ADeviceInTheCoreItselfComesBeforeTheMasters) {
    fs::create_directories(kMasters / "spi1/spi1.0");
    fs::create_directories(kCore / "spi1.0");
    EXPECT_EQ(kCore / "spi1.0", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, NeedsNoMasterWhenTheDeviceIsInTheCore) {
    fs::create_directories(kCore / "spi1.0");
    EXPECT_EQ(kCore / "spi1.0", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, ChipSelectsAreDecimalNumbersUpToTheNamesEnd) {
    const struct {
        const char* name;
        int chipSelect;
        bool match;
    } rows[] = {
        {"spi1.0", 0, true},
        {"spi1.00", 0, true},
        {"spi1.0a", 0, false},
        {"spi1.", 0, false},
        {"spi1", 0, false},
        {"spi10", 0, false},
        {"spi1.1", 0, false},
        {"spi1.12", 12, true},
        {"spi1.012", 12, true},
        {"spi1.0x0", 0, false},
        {"spi1. 0", 0, false},
        {"spi1.+0", 0, false},
        {"spi1.-0", 0, false},
        {"spi1.0.0", 0, false},
        {"spi.0", 0, true},
        {"spidev1.0", 0, true},
        {"Spi1.0", 0, false},
        {"xspi1.0", 0, false},
        {"spi1.-2", -2, false},
        {"spi1.0a", -1, false},
        {"spi1.", -1, false},
        {"spi1", -1, false},
        {"spi1.7", -1, true},
        {"spi1.-1", -1, false},
        {"spi1.4294967295", -2, false},
        {"spi1.99999999999999999999", 0, false},
        {"spi1.99999999999999999999", -1, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        fs::create_directories(kCore / row.name);
        EXPECT_EQ(row.match ? kCore / row.name : fs::path(), SPISlave::open("oled_spi", row.chipSelect));
        fs::remove(kCore / row.name);
    }
}

TEST_F(SPISlaveTest, AnyChipSelectTakesTheFirstDeviceListed) {
    for (const char* name : {"spi1.2", "spi1.0", "spi1.1"}) {
        fs::create_directories(kCore / name);
    }
    EXPECT_EQ(firstListed(kCore), SPISlave::open("oled_spi", -1));
}

TEST_F(SPISlaveTest, OnlyTheMasterThatIsListedFirstIsSearched) {
    fs::create_directories(kMasters / "spi1");
    fs::create_directories(kMasters / "spi2");
    const fs::path first = firstListed(kMasters);
    const fs::path second = first.filename() == "spi1" ? kMasters / "spi2" : kMasters / "spi1";
    fs::create_directories(second / "spi9.0");
    EXPECT_EQ("", SPISlave::open("oled_spi", 0));
    fs::create_directories(first / "spi9.0");
    EXPECT_EQ(first / "spi9.0", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, EntriesOfTheMasterDirectoryWithOtherNamesArePassedOver) {
    fs::create_directories(kMasters / "power/spi1.0");
    EXPECT_EQ("", SPISlave::open("oled_spi", 0));
    fs::create_directories(kMasters / "spi1/spi1.0");
    EXPECT_EQ(kMasters / "spi1/spi1.0", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, FollowsSymbolicLinks) {
    fs::create_directories("/tmp/devices/master/real");
    fs::create_directories(kMasters);
    fs::create_directory_symlink("/tmp/devices/master", kMasters / "spi1");
    fs::create_directory_symlink("/tmp/devices/master/real", "/tmp/devices/master/spi1.0");
    EXPECT_EQ(kMasters / "spi1/spi1.0", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, WhatIsNoDirectoryIsPassedOver) {
    support::PrivateWorld::write(kCore / "spi1.0", "");
    fs::create_symlink("/tmp/missing", kCore / "spi2.0");
    fs::create_directories(kMasters / "spi1/spi3.0");
    EXPECT_EQ(kMasters / "spi1/spi3.0", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, WhatIsMissingOnTheWayMakesThePathEmpty) {
    EXPECT_EQ("", SPISlave::open("no_such_core", 0));
    EXPECT_EQ("", SPISlave::open("oled_spi", 0));
    fs::create_directories(kMasters);
    EXPECT_EQ("", SPISlave::open("oled_spi", 0));
    fs::create_directories(kMasters / "spi1");
    EXPECT_EQ("", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, FileSystemErrorsMakeThePathEmpty) {
    fs::create_directories(kMasters / "spi1/spi1.0");
    fs::create_symlink(kCore / "spi1.0", kCore / "spi1.0");
    EXPECT_EQ("", SPISlave::open("oled_spi", 0));
    support::PrivateWorld::write("/sys/bus/avalon/devices/file", "");
    EXPECT_EQ("", SPISlave::open("file", 0));
    support::PrivateWorld::write("/sys/bus/avalon/devices/other/spi_master/spi1", "no directory");
    EXPECT_EQ("", SPISlave::open("other", 0));
}

TEST_F(SPISlaveTest, AnEntryThatCannotBeExaminedMakesThePathEmptyWhateverItsName) {
    fs::create_directories(kCore);
    fs::create_symlink(kCore / "driver", kCore / "driver");
    EXPECT_EQ("", SPISlave::open("oled_spi", 0));
}

TEST_F(SPISlaveTest, NothingIsLogged) {
    logEverything();
    SPISlave::open("no_such_core", 0);
    EXPECT_THAT(syslog.lines(), testing::IsEmpty());
}

}  // namespace
