#include "Tools/boardsim/Models/W1Bus.h"

#include <gmock/gmock.h>

#include "Tools/boardsim/Models/W1Eeprom.h"
#include "Tools/boardsim/Models/W1TempSensor.h"

namespace {

using boardsim::FaultSchedule;
using boardsim::FileAnswer;
using boardsim::TextAttribute;
using boardsim::W1Bus;
using boardsim::W1Device;
using boardsim::W1Eeprom;
using boardsim::W1File;
using boardsim::W1TempSensor;
using testing::ElementsAre;

class W1BusTest : public testing::Test {
protected:
    W1BusTest() {
        bus.connect(eeprom);
        bus.connect(sensor);
    }

    TextAttribute attribute(const std::string& name) {
        for (TextAttribute& candidate : bus.attributes()) {
            if (candidate.name == name) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no " << name;
        return {};
    }
    std::string show(const std::string& name) { return attribute(name).show(); }
    std::errc store(const std::string& name, std::string_view text) { return attribute(name).store(text); }

    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& device : bus.devices()) {
            found.push_back(device->id().name());
        }
        return found;
    }

    W1Bus bus{1};
    std::shared_ptr<W1Eeprom> eeprom = std::make_shared<W1Eeprom>(0x1A2B);
    std::shared_ptr<W1TempSensor> sensor = std::make_shared<W1TempSensor>(0x3C4D);
};

FileAnswer readFile(const std::vector<W1File>& files, const std::string& name, std::string& text) {
    for (const W1File& file : files) {
        if (file.name == name) {
            text.resize(file.bytes);
            return file.read(0, std::as_writable_bytes(std::span(text)));
        }
    }
    ADD_FAILURE() << "no " << name;
    return {};
}

TEST_F(W1BusTest, KnowsNobodyBeforeASearch) {
    EXPECT_THAT(names(), ElementsAre());
    EXPECT_EQ("not found.\n", show("w1_master_slaves"));
    EXPECT_EQ("0\n", show("w1_master_slave_count"));
    EXPECT_EQ("0\n", show("w1_master_attempts"));
    EXPECT_EQ("w1_bus_master1\n", show("w1_master_name"));
}

TEST_F(W1BusTest, ASearchFindsWhoIsPlugged) {
    sensor->unplug();
    EXPECT_EQ(std::errc{}, store("w1_master_search", "1\n"));
    EXPECT_THAT(names(), ElementsAre("2d-000000001a2b"));
    sensor->plug();
    EXPECT_THAT(names(), ElementsAre("2d-000000001a2b"));
    store("w1_master_search", "1");
    EXPECT_EQ("2d-000000001a2b\n22-000000003c4d\n", show("w1_master_slaves"));
    EXPECT_EQ("2\n", show("w1_master_slave_count"));
    EXPECT_EQ("2\n", show("w1_master_attempts"));
    EXPECT_EQ("0\n", show("w1_master_search"));
}

TEST_F(W1BusTest, ADeviceIsForgottenAfterTenSearchesWithoutIt) {
    bus.search();
    eeprom->unplug();
    EXPECT_EQ(std::errc{}, store("w1_master_search", "9"));
    EXPECT_THAT(names(), ElementsAre("2d-000000001a2b", "22-000000003c4d"));
    bus.search();
    EXPECT_THAT(names(), ElementsAre("22-000000003c4d"));
}

TEST_F(W1BusTest, OneAnswerInTenSearchesKeepsADevice) {
    bus.search();
    for (int i = 0; i < 5; ++i) {
        eeprom->unplug();
        store("w1_master_search", "9");
        eeprom->plug();
        bus.search();
    }
    EXPECT_EQ(2U, names().size());
}

TEST_F(W1BusTest, AContinualSearchHappensWheneverSomebodyLooks) {
    store("w1_master_search", "-1");
    EXPECT_EQ("-1\n", show("w1_master_search"));
    const auto late = std::make_shared<W1TempSensor>(0x5E);
    bus.connect(late);
    EXPECT_EQ(2U, names().size());
    bus.searchIfContinual();
    EXPECT_EQ(3U, names().size());
    store("w1_master_search", "0");
    eeprom->unplug();
    for (int i = 0; i < 20; ++i) {
        bus.searchIfContinual();
    }
    EXPECT_EQ(3U, names().size());
}

TEST_F(W1BusTest, ARemovedDeviceComesBackWithTheNextSearch) {
    bus.search();
    EXPECT_EQ(std::errc{}, store("w1_master_remove", "2d-000000001a2b\n"));
    EXPECT_THAT(names(), ElementsAre("22-000000003c4d"));
    bus.search();
    EXPECT_THAT(names(), ElementsAre("22-000000003c4d", "2d-000000001a2b"));
}

TEST_F(W1BusTest, AConnectedSlaveCanBeAddedWithoutASearchOnce) {
    EXPECT_EQ(std::errc{}, store("w1_master_add", "22-000000003c4d"));
    EXPECT_THAT(names(), ElementsAre("22-000000003c4d"));
    EXPECT_EQ(std::errc::invalid_argument, store("w1_master_add", "22-000000003c4d"));
    EXPECT_EQ(std::errc::invalid_argument, store("w1_master_add", "22-000000000001"));
}

TEST_F(W1BusTest, WhatIsNoNumberOrNoDeviceIsRefused) {
    bus.search();
    EXPECT_EQ(std::errc::invalid_argument, store("w1_master_search", "often"));
    EXPECT_EQ(std::errc::invalid_argument, store("w1_master_search", ""));
    EXPECT_EQ(std::errc::invalid_argument, store("w1_master_remove", "2d-000000000000"));
    EXPECT_EQ(std::errc::invalid_argument, store("w1_master_remove", "all"));
    EXPECT_EQ(std::errc::invalid_argument, store("w1_master_max_slave_count", "0"));
    EXPECT_EQ(2U, names().size());
}

TEST_F(W1BusTest, ASearchFindsNoMoreThanAskedFor) {
    EXPECT_EQ(std::errc{}, store("w1_master_max_slave_count", "1"));
    bus.search();
    EXPECT_THAT(names(), ElementsAre("2d-000000001a2b"));
    EXPECT_EQ("1\n", show("w1_master_max_slave_count"));
}

TEST_F(W1BusTest, ARomWithAWrongCrcIsNotFoundThisTime) {
    eeprom->faults().romErrors = FaultSchedule(0, 1);
    bus.search();
    EXPECT_THAT(names(), ElementsAre("22-000000003c4d"));
    bus.search();
    EXPECT_EQ(2U, names().size());
}

TEST_F(W1BusTest, ADeviceHasItsIdItsNameAndTheFilesOfItsChip) {
    bus.search();
    std::vector<std::string> found;
    for (const W1File& file : bus.devices()[1]->files()) {
        found.push_back(file.name);
    }
    EXPECT_THAT(found, ElementsAre("id", "name", "temp", "user"));
    std::string text;
    EXPECT_EQ(16U, readFile(bus.devices()[1]->files(), "name", text).count);
    EXPECT_EQ("22-000000003c4d\n", text);
    EXPECT_EQ(8U, readFile(bus.devices()[1]->files(), "id", text).count);
    EXPECT_EQ("\x22\x4d\x3c", text.substr(0, 3));
}

TEST_F(W1BusTest, FilesOfAForgottenDeviceSayNoSuchDeviceEvenWhenItIsFoundAgain) {
    bus.search();
    const std::vector<W1File> old = bus.devices()[0]->files();
    std::string text;
    EXPECT_EQ(128U, readFile(old, "eeprom", text).count);
    store("w1_master_remove", "2d-000000001a2b");
    bus.search();
    EXPECT_EQ(std::errc::no_such_device, readFile(old, "eeprom", text).error);
    EXPECT_EQ(std::errc::no_such_device, readFile(old, "name", text).error);
    EXPECT_EQ(std::errc::no_such_device, old[2].write(0, {}).error);
    EXPECT_EQ(128U, readFile(bus.devices()[1]->files(), "eeprom", text).count);
}

}  // namespace
