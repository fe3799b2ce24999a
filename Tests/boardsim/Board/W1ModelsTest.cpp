#include "Tools/boardsim/Board/W1Models.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using boardsim::encodeRecord;
using boardsim::parseFault;
using boardsim::ServedDirectory;
using boardsim::ServedEntry;
using boardsim::ServedFile;
using boardsim::ServedLink;
using boardsim::Transfer;
using boardsim::W1Models;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(EepromRecordTest, TheChecksumStandsBeforeTheData) {
    const std::vector<std::byte> record = encodeRecord({'1', '2', '3', '4', '5', '6', '7', '8', '9'});
    ASSERT_EQ(11U, record.size());
    EXPECT_EQ(std::byte{0x31}, record[0]);
    EXPECT_EQ(std::byte{0xC3}, record[1]);
    EXPECT_EQ(std::byte{'9'}, record[10]);
    EXPECT_THAT(encodeRecord({}), ElementsAre(std::byte{0}, std::byte{0}));
}

class W1ModelsTest : public testing::Test {
protected:
    W1ModelsTest() : models({{{{0xA1, {{2, {'1'}}}}}, {{0xB2, 3, 400}}}, {}}, [](const std::string&) {}) {}

    static std::vector<ServedEntry> list(const ServedDirectory& directory) { return directory.entries(); }

    template <typename Kind>
    std::shared_ptr<const Kind> find(const std::string& path) {
        boardsim::ServedNode node = models.tree().root;
        std::size_t start = 0;
        while (start < path.size()) {
            const std::size_t end = std::min(path.find('/', start), path.size());
            const std::string name = path.substr(start, end - start);
            bool found = false;
            for (const ServedEntry& entry :
                 std::get<std::shared_ptr<const ServedDirectory>>(node)->entries()) {
                if (entry.name == name) {
                    node = entry.node;
                    found = true;
                    break;
                }
            }
            if (!found) {
                return nullptr;
            }
            start = end + 1;
        }
        return std::get<std::shared_ptr<const Kind>>(node);
    }

    Transfer read(const std::string& path) {
        text.resize(64);
        const Transfer done = find<ServedFile>(path)->open().read(0, std::as_writable_bytes(std::span(text)));
        text.resize(done.count);
        return done;
    }
    Transfer write(const std::string& path, std::string_view bytes) {
        return find<ServedFile>(path)->open().write(0, std::as_bytes(std::span(bytes)));
    }
    void fault(const std::string& words) { models.apply(parseFault(words)); }
    std::string complaint(const std::string& words) {
        try {
            fault(words);
        } catch (const std::invalid_argument& refusal) {
            return refusal.what();
        }
        return {};
    }

    const std::string bus = "devices/w1_bus_master1/";
    const std::string eeprom = bus + "2d-0000000000a1/eeprom";
    const std::string temp = bus + "22-0000000000b2/temp";
    std::string text;
    W1Models models;
};

TEST_F(W1ModelsTest, ShowsBusesTheirDevicesAndALinkToEach) {
    std::vector<std::string> names;
    for (const ServedEntry& entry : list(*find<ServedDirectory>("devices"))) {
        names.push_back(entry.name);
    }
    EXPECT_THAT(names, ElementsAre("w1_bus_master1", "2d-0000000000a1", "22-0000000000b2", "w1_bus_master2"));
    EXPECT_EQ("w1_bus_master1/2d-0000000000a1", find<ServedLink>("devices/2d-0000000000a1")->target);
    EXPECT_EQ(128U, find<ServedFile>(eeprom)->bytes);
    EXPECT_EQ(0444U, find<ServedFile>(temp)->mode);
    EXPECT_EQ("/sys/bus/w1", models.tree().path);
}

TEST_F(W1ModelsTest, TheEepromHoldsTheRecordAtItsPlace) {
    read(eeprom);
    EXPECT_EQ(std::string("\0\0\x26\x72"
                          "1\0",
                          6),
              text.substr(0, 6));
}

TEST_F(W1ModelsTest, WhatStaysKeepsItsIdentityAndWhatIsFoundAgainIsNew) {
    const auto device = find<ServedDirectory>(bus + "2d-0000000000a1");
    EXPECT_EQ(device, find<ServedDirectory>(bus + "2d-0000000000a1"));
    EXPECT_EQ(17U, write(bus + "w1_master_remove", "2d-0000000000a1\n ").count);
    EXPECT_EQ(nullptr, find<ServedDirectory>(bus + "2d-0000000000a1"));
    EXPECT_EQ(nullptr, find<ServedLink>("devices/2d-0000000000a1"));
    write(bus + "w1_master_search", "1\n");
    EXPECT_NE(nullptr, find<ServedDirectory>(bus + "2d-0000000000a1"));
    EXPECT_NE(device, find<ServedDirectory>(bus + "2d-0000000000a1"));
}

TEST_F(W1ModelsTest, AnAttributeIsReadAnewFromItsBeginningOnly) {
    const boardsim::FileCalls open = find<ServedFile>(bus + "w1_master_slave_count")->open();
    text.resize(2);
    EXPECT_EQ(2U, open.read(0, std::as_writable_bytes(std::span(text))).count);
    EXPECT_EQ("2\n", text);
    write(bus + "w1_master_remove", "2d-0000000000a1");
    text.resize(1);
    EXPECT_EQ(1U, open.read(0, std::as_writable_bytes(std::span(text))).count);
    EXPECT_EQ("1", text);
    write(bus + "w1_master_search", "1");
    EXPECT_EQ(1U, open.read(1, std::as_writable_bytes(std::span(text))).count);
    EXPECT_EQ("\n", text);
}

/// What goes wrong, and what becomes of two reads of the EEPROM, of the thermometer and of one write.
struct Row {
    const char* fault;
    std::size_t eeprom;
    std::size_t temp;
    std::size_t written;
};

class W1FaultTest : public W1ModelsTest, public testing::WithParamInterface<Row> {};

TEST_P(W1FaultTest, ShowsInTransfers) {
    fault(GetParam().fault);
    EXPECT_EQ(GetParam().eeprom, read(eeprom).count);
    EXPECT_EQ(GetParam().temp, read(temp).count);
    EXPECT_EQ(GetParam().written, write(eeprom, "123456").count);
}

INSTANTIATE_TEST_SUITE_P(Actions, W1FaultTest,
                         testing::Values(Row{"w1:2d-0000000000a1:unplug", 0, 4, 0},
                                         Row{"w1:2d-0000000000a1:unplug:times=1", 0, 4, 6},
                                         Row{"w1:22-0000000000b2:unplug:after=1", 64, 4, 6},
                                         Row{"w1:22-0000000000b2:unplug", 64, 0, 6},
                                         Row{"w1:2d-0000000000a1:short-read", 32, 4, 6},
                                         Row{"w1:22-0000000000b2:short-read", 64, 2, 6},
                                         Row{"w1:2d-0000000000a1:short-write", 64, 4, 3},
                                         Row{"w1:2d-0000000000a1:torn=2", 64, 4, 0},
                                         Row{"w1:2d-0000000000a1:torn=6", 64, 4, 6}));

TEST_F(W1ModelsTest, AFaultOfTheRomHidesASlaveFromASearch) {
    fault("w1:22-0000000000b2:rom-crc:times=10");
    write(bus + "w1_master_search", "10");
    EXPECT_EQ(nullptr, find<ServedDirectory>(bus + "22-0000000000b2"));
    write(bus + "w1_master_search", "1");
    EXPECT_NE(nullptr, find<ServedDirectory>(bus + "22-0000000000b2"));
}

TEST_F(W1ModelsTest, ACrcErrorIsAWrongBitOrAnInvalidTemperature) {
    fault("w1:2d-0000000000a1:crc:times=1");
    fault("w1:22-0000000000b2:crc:times=1");
    read(eeprom);
    EXPECT_NE('\0', text[0]);
    read(temp);
    EXPECT_EQ("\xFF\xFF\xFF\xFF", text);
}

TEST_F(W1ModelsTest, AThermometerCanBeWarmed) {
    fault("w1:22-0000000000b2:value=-1.5");
    read(temp);
    EXPECT_EQ("\xE8\xFF\xFF\xFF", text);
}

TEST_F(W1ModelsTest, FaultsThatNoSlaveCanHaveAreRefusedByName) {
    EXPECT_THAT(complaint("w1:22-0000000000a1:unplug"), HasSubstr("no slave '22-0000000000a1'"));
    EXPECT_THAT(
        complaint("w1:22-0000000000b2:melt"),
        HasSubstr("no action 'melt'; there are unplug, rom-crc, crc, short-read, short-write, torn, value"));
    EXPECT_THAT(complaint("w1:22-0000000000b2:torn=3"), HasSubstr("only EEPROMs"));
    EXPECT_THAT(complaint("w1:2d-0000000000a1:torn=129"), HasSubstr("number from 0 to 128"));
    EXPECT_THAT(complaint("w1:2d-0000000000a1:value=3"), HasSubstr("want a thermometer"));
    for (const char* value : {"", "=", "=warm", "=1e9", "=nan", "=3C"}) {
        EXPECT_THAT(complaint("w1:22-0000000000b2:value" + std::string(value)), HasSubstr("degrees Celsius"));
    }
}

}  // namespace
