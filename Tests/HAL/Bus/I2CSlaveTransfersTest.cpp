#include <array>
#include <climits>
#include <vector>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/I2cCalls.h"
#include "Vl/HAL/Bus/I2CSlave.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::I2CSlave;

/// On bus 3 with slave 0x3E.
class I2CSlaveTransfersTest : public BoardWorld {
protected:
    I2CSlaveTransfersTest() {
        support::PrivateWorld::write("/dev/i2c-3", "");
        slave.init(3, false);
        slave.selectSlave(0x3E);
    }

    /// What was asked of the kernel after the slave was selected.
    std::vector<std::string> transfers() const { return {kernel.calls.begin() + 1, kernel.calls.end()}; }

    I2cCalls kernel;
    I2CSlave slave;
};

TEST_F(I2CSlaveTransfersTest, SelectingASlaveAsksTheKernelOnce) {
    EXPECT_THAT(kernel.calls, ElementsAre("select 3e"));
    EXPECT_TRUE(slave.selectSlave(0x7F));
    EXPECT_THAT(kernel.calls, ElementsAre("select 3e", "select 7f"));
}

TEST_F(I2CSlaveTransfersTest, AnAddressIsKeptEvenWhenTheKernelRefusesIt) {
    kernel.failing = 1;
    EXPECT_FALSE(slave.selectSlave(0x50));
    EXPECT_TRUE(slave.writeMulti("", 0));
    EXPECT_THAT(kernel.calls, ElementsAre("select 3e", "select 50", "message 0050 0000 0000:"));
}

TEST_F(I2CSlaveTransfersTest, WritesBytesAndWords) {
    EXPECT_TRUE(slave.write(0x11, 0xA5));
    EXPECT_TRUE(slave.write16(0x10, 0x12F4));
    EXPECT_THAT(transfers(), ElementsAre("write8 11=a5", "write16 10=12f4"));
}

TEST_F(I2CSlaveTransfersTest, ReadsBytesAndWords) {
    kernel.registers[0x11] = 0xFE;
    kernel.registers[0x12] = 0x34;
    std::uint8_t byte = 0;
    std::uint16_t word = 0;
    EXPECT_EQ(0xFE, slave.read8(0x11));
    EXPECT_TRUE(slave.read(0x11, byte));
    EXPECT_EQ(0xFE, byte);
    EXPECT_TRUE(slave.read16(0x11, word));
    EXPECT_EQ(0x34FE, word);
    EXPECT_THAT(transfers(), ElementsAre("read8 11", "read8 11", "read16 11"));
}

TEST_F(I2CSlaveTransfersTest, AByteReadIsNeverNegative) {
    for (const int value : {0x00, 0x7F, 0x80, 0xFF}) {
        kernel.registers[0] = static_cast<std::uint8_t>(value);
        EXPECT_EQ(value, slave.read8(0));
    }
}

TEST_F(I2CSlaveTransfersTest, AFailedWriteIsReported) {
    kernel.failing = 1;
    EXPECT_FALSE(slave.write(0x11, 0xA5));
    kernel.failing = 2;
    EXPECT_FALSE(slave.write16(0x11, 0xA5));
}

TEST_F(I2CSlaveTransfersTest, AFailedReadLeavesTheValueAsItWas) {
    std::uint8_t byte = 0x77;
    std::uint16_t word = 0x7777;
    kernel.next[0x11] = {-1, -1, -1};
    EXPECT_EQ(-1, slave.read8(0x11));
    EXPECT_FALSE(slave.read(0x11, byte));
    EXPECT_FALSE(slave.read16(0x11, word));
    EXPECT_EQ(0x77, byte);
    EXPECT_EQ(0x7777, word);
}

TEST_F(I2CSlaveTransfersTest, OnlyEightBitsOfARegistersNumberAreSent) {
    std::array<std::uint8_t, 1> bytes{};
    slave.write(0x1A5, 1);
    slave.read8(-1);
    slave.readMultiAt(0x1A5, bytes.data(), 1);
    EXPECT_THAT(transfers(), ElementsAre("write8 a5=01", "read8 ff", "message 003e 0000 0001: a5",
                                         "message 003e 4001 0001"));
}

TEST_F(I2CSlaveTransfersTest, ReadsManyBytesWithoutARepeatedStartOnPurpose) {
    std::array<std::uint8_t, 5> bytes{};
    kernel.messageByte = 0x5A;
    EXPECT_TRUE(slave.readMultiAt(0x20, bytes.data(), 4));
    EXPECT_THAT(transfers(), ElementsAre("message 003e 0000 0001: 20", "message 003e 4001 0004"));
    EXPECT_THAT(bytes, ElementsAre(0x5A, 0x5A, 0x5A, 0x5A, 0));
}

TEST_F(I2CSlaveTransfersTest, ReadingManyBytesSucceedsOnlyWithBothMessagesDone) {
    std::array<std::uint8_t, 4> bytes{};
    for (const int done : {-1, 0, 1, 2, 3, INT_MAX}) {
        kernel.messagesDone = done;
        EXPECT_EQ(done == 2, slave.readMultiAt(0x20, bytes.data(), 4)) << done;
    }
}

TEST_F(I2CSlaveTransfersTest, WritesManyBytesAsOneMessage) {
    EXPECT_TRUE(slave.writeMulti("\x01\xFF\x00", 3));
    EXPECT_THAT(transfers(), ElementsAre("message 003e 0000 0003: 01 ff 00"));
}

TEST_F(I2CSlaveTransfersTest, WritingManyBytesSucceedsOnlyWithOneMessageDone) {
    for (const int done : {-1, 0, 1, 2}) {
        kernel.messagesDone = done;
        EXPECT_EQ(done == 1, slave.writeMulti("x", 1)) << done;
    }
}

TEST_F(I2CSlaveTransfersTest, SixteenBitsOfALengthCount) {
    std::array<std::uint8_t, 2> bytes{};
    EXPECT_TRUE(slave.readMultiAt(0, bytes.data(), 0x10002));
    EXPECT_TRUE(slave.writeMulti(bytes.data(), 0x10001));
    EXPECT_THAT(transfers(), ElementsAre("message 003e 0000 0001: 00", "message 003e 4001 0002",
                                         "message 003e 0000 0001: 00"));
}

TEST_F(I2CSlaveTransfersTest, CheckReturnsTheObjectUnchanged) {
    EXPECT_EQ(&slave, &slave.check());
    EXPECT_THAT(transfers(), IsEmpty());
}

}  // namespace
