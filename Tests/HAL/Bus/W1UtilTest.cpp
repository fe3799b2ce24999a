#include "Vl/HAL/Bus/W1Util.h"

#include <filesystem>
#include <string>
#include <vector>

#include "Tests/HAL/Bus/W1World.h"

namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Valen::vlslist;
using Valen::HAL::W1Util;
using W1Handle = W1Util::W1Handle;

constexpr W1Handle kSensor{0x1a2b3c'2800};

class W1UtilTest : public W1World {
protected:
    static std::vector<W1Handle> find(W1Util::Family family, int bus) {
        vlslist<W1Handle> found;
        W1Util::FindW1(found, family, bus);
        return {found.begin(), found.end()};
    }
    static std::string read(int bus, const char* file) {
        return support::PrivateWorld::read(busDirectory(bus) / file);
    }
};

TEST_F(W1UtilTest, FindsTheSlavesOfAFamilyOnOneBusOrOnAny) {
    addBus(1);
    addBus(2);
    addSlave(1, "28-0000001a2b3c");
    addSlave(1, "2d-000000000001");
    addSlave(2, "28-000000000002");
    addSlave(2, "28-000000000000");
    EXPECT_THAT(find(0x28, 1), ElementsAre(kSensor));
    EXPECT_THAT(find(0x28, 2), ElementsAre(W1Handle{0x22800}));
    EXPECT_THAT(find(0x28, -1), UnorderedElementsAre(kSensor, W1Handle{0x22800}));
    EXPECT_THAT(find(-1, 1), UnorderedElementsAre(kSensor, W1Handle{0x12d00}));
    EXPECT_THAT(find(0x22, -1), IsEmpty());
}

TEST_F(W1UtilTest, SlavesArePushedAtTheFrontInTheOrderOfTheListing) {
    addBus(1);
    for (const char* serial : {"1", "2", "3", "4"}) {
        addSlave(1, std::string("28-00000000000") + serial);
    }
    std::vector<std::string> listed;
    for (const auto& entry : fs::directory_iterator(busDirectory(1))) {
        if (entry.path().filename().native().starts_with("28-")) {
            listed.insert(listed.begin(), entry.path().filename());
        }
    }
    vlslist<W1Handle> found{kSensor};
    EXPECT_TRUE(W1Util::FindW1(found, 0x28, 1));
    for (const std::string& name : listed) {
        EXPECT_EQ(name, found.front().name());
        found.pop_front();
    }
    EXPECT_EQ(kSensor, found.front());
}

TEST_F(W1UtilTest, AMissingBusHasNoSlaves) {
    vlslist<W1Handle> found;
    EXPECT_FALSE(W1Util::FindW1(found, -1, 7));
    EXPECT_TRUE(found.empty());
}

TEST_F(W1UtilTest, BussesAreCountedFromOneWithoutGaps) {
    EXPECT_EQ(0, W1Util::numberOfBusses());
    addBus(1);
    addBus(2);
    addBus(4);
    EXPECT_EQ(2, W1Util::numberOfBusses());
    support::PrivateWorld::write(kLinks / "w1_bus_master3", "no directory");
    EXPECT_EQ(2, W1Util::numberOfBusses());
}

TEST_F(W1UtilTest, ASearchIsTriggeredOnOneBusOrOnEvery) {
    addBus(1);
    addBus(2);
    EXPECT_TRUE(W1Util::searchSlaves(2));
    EXPECT_EQ("", read(1, "w1_master_search"));
    EXPECT_EQ("1\n", read(2, "w1_master_search"));
    EXPECT_TRUE(W1Util::searchSlaves());
    EXPECT_EQ("1\n", read(1, "w1_master_search"));
    fs::resize_file(busDirectory(1) / "w1_master_search", 0);
    EXPECT_TRUE(W1Util::searchSlaves(-1));
    EXPECT_EQ("1\n", read(1, "w1_master_search"));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(W1UtilTest, ASearchThatCannotBeTriggeredIsLoggedAndTheOthersGoOn) {
    addBus(1);
    addBus(2);
    fs::remove(busDirectory(1) / "w1_master_search");
    EXPECT_FALSE(W1Util::searchSlaves());
    EXPECT_EQ("1\n", read(2, "w1_master_search"));
    EXPECT_THAT(syslog.lines(), ElementsAre(error("OneWire: Unable to search: "
                                                  "/sys/bus/w1/devices/w1_bus_master1/w1_master_search")));
    EXPECT_FALSE(fs::exists(busDirectory(1) / "w1_master_search"));
}

TEST_F(W1UtilTest, FindsTheBusThatHoldsASlave) {
    EXPECT_EQ(-1, W1Util::findBus(kSensor));
    addBus(1);
    addBus(2);
    EXPECT_EQ(-1, W1Util::findBus(kSensor));
    addSlave(2, "28-0000001a2b3c");
    EXPECT_EQ(2, W1Util::findBus(kSensor));
}

TEST_F(W1UtilTest, RemovingWritesTheSlavesNameToItsBus) {
    addBus(1);
    addSlave(1, "28-0000001a2b3c");
    EXPECT_TRUE(W1Util::removeW1Slave(kSensor));
    EXPECT_EQ("28-0000001a2b3c\n", read(1, "w1_master_remove"));
    EXPECT_THAT(syslog.lines(), ElementsAre(support::LogLine{
                                    kUserLog, kInfo, "PTPCPeriph: removed w1 slave: 28-0000001a2b3c"}));
}

TEST_F(W1UtilTest, ASlaveWithoutABusCannotBeRemoved) {
    EXPECT_FALSE(W1Util::removeW1Slave(kSensor));
    const std::vector<std::string> lines = syslog.texts();
    ASSERT_EQ(1U, lines.size());
    EXPECT_THAT(lines[0], testing::StartsWith("OneWire: Unable to find bus of 28-0000001a2b3c"));
}

TEST_F(W1UtilTest, ARemovalThatTheKernelRefusesIsLogged) {
    addBus(1);
    addSlave(1, "28-0000001a2b3c");
    fs::remove(busDirectory(1) / "w1_master_remove");
    EXPECT_FALSE(W1Util::removeW1Slave(kSensor));
    EXPECT_THAT(syslog.lines(), ElementsAre(error("OneWire: Unable to remove w1 slave: 28-0000001a2b3c")));
}

TEST_F(W1UtilTest, AllSlavesOfAllBussesCanBeRemoved) {
    addBus(1);
    addBus(2);
    addSlave(1, "28-0000001a2b3c");
    addSlave(2, "2d-000000000001");
    EXPECT_TRUE(W1Util::removeAllW1Slaves());
    EXPECT_EQ("28-0000001a2b3c\n", read(1, "w1_master_remove"));
    EXPECT_EQ("2d-000000000001\n", read(2, "w1_master_remove"));
    fs::remove(busDirectory(1) / "w1_master_remove");
    EXPECT_FALSE(W1Util::removeAllW1Slaves());
}

TEST_F(W1UtilTest, NoDescriptorIsLeft) {
    addBus(1);
    addSlave(1, "28-0000001a2b3c");
    const int before = openDescriptors();
    find(-1, -1);
    W1Util::searchSlaves();
    W1Util::removeAllW1Slaves();
    EXPECT_EQ(before, openDescriptors());
}

}  // namespace
