// Who the card is by its 1-Wire chips.
#include <string>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/Checksum.h"
#include "Tests/HAL/Chips/W1SensorWorld.h"
#include "Vl/Common/Identity/HaldenSerial.h"
#include "Vl/Common/Identity/SerialNo.h"
#include "Vl/Common/Identity/Version.h"

namespace {

using namespace std::chrono_literals;
using std::string_literals::operator""s;
using support::PrivateWorld;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Valen::HaldenSerial;
using Valen::SerialNo;
using Valen::Version;

class CardSerialTest : public W1SensorWorld {
protected:
    CardSerialTest() { logged(); }

    TestBoard board;
    SerialNo serial{7};
};

TEST_F(CardSerialTest, IsTheIdOfTheOnlySensorWithoutUserData) {
    addSensor(1, "22-000000000001", "\x01\x00"s, "");
    addSensor(1, kName, "\x00\x00"s, "");
    EXPECT_TRUE(board.getCardSerial(serial));
    EXPECT_EQ(kId, serial.number);
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(CardSerialTest, LeavesNoSensorWithThePoller) {
    addSensor(1, kName, "\x00\x00"s, "");
    EXPECT_TRUE(board.getCardSerial(serial));
    EXPECT_EQ(0, descriptorsOn((busDirectory(1) / kName / "temp").native()));
    removeSlave(1, kName);
    EXPECT_FALSE(board.getCardSerial(serial));
    EXPECT_EQ(kId, serial.number);
}

TEST_F(CardSerialTest, OtherwiseIsTheLowestOfAllSensors) {
    addBus(2);
    addSensor(1, "22-000000000003", "\x00\x00"s, "");
    addSensor(1, "22-000000000004", "\x00\x00"s, "");
    addSensor(2, "22-000000000002", "\x05\x00"s, "");
    addSensor(2, "28-000000000001", "\x00\x00"s, "");
    EXPECT_TRUE(board.getCardSerial(serial));
    EXPECT_EQ(0x22200U, serial.number);
    EXPECT_THAT(logged(),
                ElementsAre(debug("CPCardInterface: found 2 matching w1 temp of type 0"),
                            debug("CPCardInterface: Using lowest unprogrammed W1 chip for cardserial!")));
}

TEST_F(CardSerialTest, ASensorOfAnotherBusIsNotTheCards) {
    addBus(2);
    addSensor(2, kName, "\x00\x00"s, "");
    EXPECT_TRUE(board.getCardSerial(serial));
    EXPECT_EQ(kId, serial.number);
    EXPECT_THAT(logged(), testing::Contains(
                              debug("CPCardInterface: Using lowest unprogrammed W1 chip for cardserial!")));
}

TEST_F(CardSerialTest, ASensorThatCannotBeOpenedIsOneOfAll) {
    addSlave(1, kName);
    PrivateWorld::write(busDirectory(1) / kName / "user", "\x00\x00"s);
    EXPECT_TRUE(board.getCardSerial(serial));
    EXPECT_EQ(kId, serial.number);
    EXPECT_EQ(debug("CPCardInterface: Using lowest unprogrammed W1 chip for cardserial!"), logged().back());
}

TEST_F(CardSerialTest, WithoutSensorsThereIsNone) {
    addSlave(1, "28-000000000001");
    EXPECT_FALSE(board.getCardSerial(serial));
    EXPECT_EQ(7U, serial.number);
    EXPECT_THAT(logged(), ElementsAre(debug("CPCardInterface: found 0 matching w1 temp of type 0"),
                                      debug("CPCardInterface: GetCardSerial failed!")));
}

// The switch's EEPROM.

class SwitchCardTest : public CardSerialTest {
protected:
    static inline const std::string kSerialBytes{"\xAB\xAD\xEF\xCE\xA4\x03\0\0\1\0\0\0\2\0\0\0", 16};
    static inline const std::string kChip = "0a-0000001a2b3c";

    static std::string identity(const std::string& word2) {
        return record(kSerialBytes) + record("\3\2\1\x80\4\0\xB1\x30"s + word2) + std::string(96, '\xFF');
    }
    static void addEeprom(const std::string& name, const std::string& content) {
        addSlave(1, name);
        PrivateWorld::write(busDirectory(1) / name / "eeprom", content);
    }

    Version version{{1, 2, 3}};
    HaldenSerial haldenSerial{4, 5, 6};
};

TEST_F(SwitchCardTest, IsWhatTheEepromOfItsFamilyHolds) {
    addEeprom("2d-000000000001", identity("\0\0\0\0"s));
    addEeprom(kChip, identity("\1\0\2\x80"s));
    EXPECT_TRUE(board.getSwitchCardID(version, serial, haldenSerial));
    EXPECT_EQ((Version{{0x80010203, 0x30B10004, 0x80020001}}), version);
    EXPECT_EQ(0x1a2b3c'0a00U, serial.number);
    EXPECT_EQ((HaldenSerial{4006381333931, 1, 2}), haldenSerial);
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(SwitchCardTest, TheLastWordOfTheVersionCountsOnlyWithItsTopBit) {
    addEeprom(kChip, identity("\xFF\xFF\xFF\x7F"));
    EXPECT_TRUE(board.getSwitchCardID(version, serial, haldenSerial));
    EXPECT_EQ(0U, version.words[2]);
}

TEST_F(SwitchCardTest, WithoutSuchAnEepromNothingChanges) {
    addEeprom("2d-000000000001", identity("\0\0\0\0"s));
    EXPECT_FALSE(board.getSwitchCardID(version, serial, haldenSerial));
    EXPECT_EQ((Version{{1, 2, 3}}), version);
    EXPECT_EQ(7U, serial.number);
    EXPECT_EQ((HaldenSerial{4, 5, 6}), haldenSerial);
}

TEST_F(SwitchCardTest, AnEepromThatCannotBeReadIsNone) {
    addEeprom(kChip, std::string(128, 'x'));
    EXPECT_FALSE(board.getSwitchCardID(version, serial, haldenSerial));
    EXPECT_EQ((Version{{1, 2, 3}}), version);
    EXPECT_EQ(7U, serial.number);
}

TEST_F(SwitchCardTest, TheSerialIsReadUpTo30Times) {
    addEeprom(kChip, identity("\0\0\0\0"s));
    // Read once while the device is sought, then 29 times (a CRC and no data) in vain.
    faults.beforeRead = [&, count = 0]() mutable {
        // CRC and data of both records, and the CRC that opening reads, twice.
        constexpr int kReadsOfSearch = 6;
        if (++count == kReadsOfSearch + 1) {
            PrivateWorld::write(busDirectory(1) / kChip / "eeprom",
                                "\x12\x34"s + kSerialBytes + std::string(110, 'x'));
        }
    };
    EXPECT_FALSE(board.getSwitchCardID(version, serial, haldenSerial));
    EXPECT_THAT(faults.sleeps, SizeIs(29));
    EXPECT_THAT(faults.sleeps, Each(10ms));
}

}  // namespace
