#include "Vl/HAL/Bus/I2CSlave.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <optional>
#include <utility>
#include <vector>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/I2cCalls.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::I2CSlave;

/// Buses 3 and 12.
class I2CSlaveTest : public BoardWorld {
protected:
    I2CSlaveTest() {
        support::PrivateWorld::write("/dev/i2c-3", "");
        support::PrivateWorld::write("/dev/i2c-12", "");
    }

    /// The descriptor that the next open gives.
    static int nextDescriptor() {
        const int next = dup(0);
        close(next);
        return next;
    }

    I2cCalls kernel;
};

TEST_F(I2CSlaveTest, OpensTheBusForReadingAndWritingAndClosesItAtTheEndAndOnExec) {
    const int next = nextDescriptor();
    std::optional<I2CSlave> slave(std::in_place);
    EXPECT_TRUE(slave->init(12, false));
    EXPECT_EQ(1, descriptorsOn("/dev/i2c-12"));
    EXPECT_EQ(FD_CLOEXEC, fcntl(next, F_GETFD));
    EXPECT_EQ(O_RDWR, fcntl(next, F_GETFL) & O_ACCMODE);
    slave.reset();
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-12"));
}

TEST_F(I2CSlaveTest, TheFlagChangesNothing) {
    for (const bool flag : {false, true}) {
        I2CSlave slave;
        EXPECT_TRUE(slave.init(3, flag));
        EXPECT_TRUE(slave.write(0x11, 0x05));
    }
    EXPECT_THAT(kernel.calls, ElementsAre("write8 11=05", "write8 11=05"));
}

TEST_F(I2CSlaveTest, AnotherBusIsOpenedBeforeTheEarlierIsClosed) {
    const int first = nextDescriptor();
    I2CSlave slave;
    slave.init(3, false);
    const int second = nextDescriptor();
    EXPECT_TRUE(slave.init(12, false));
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-3"));
    EXPECT_EQ(1, descriptorsOn("/dev/i2c-12"));
    EXPECT_EQ(-1, fcntl(first, F_GETFD));
    EXPECT_EQ(FD_CLOEXEC, fcntl(second, F_GETFD));
}

TEST_F(I2CSlaveTest, ABusThatCannotBeOpenedClosesTheEarlierToo) {
    I2CSlave slave;
    slave.init(3, false);
    EXPECT_FALSE(slave.init(4, false));
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-3"));
    EXPECT_FALSE(slave.write(0, 0));
    EXPECT_THAT(kernel.calls, IsEmpty());
}

TEST_F(I2CSlaveTest, BusNumbersAreWrittenInDecimalWhateverTheyAre) {
    for (const int bus : {-1, INT_MAX, INT_MIN}) {
        const std::string path = "/dev/i2c-" + std::to_string(bus);
        I2CSlave slave;
        EXPECT_FALSE(slave.init(bus, false));
        support::PrivateWorld::write(path, "");
        EXPECT_TRUE(slave.init(bus, false));
        EXPECT_EQ(1, descriptorsOn(path));
    }
}

TEST_F(I2CSlaveTest, MovesWithItsBusAndItsSlave) {
    I2CSlave slave;
    slave.init(3, false);
    slave.selectSlave(0x50);
    I2CSlave moved = std::move(slave);
    EXPECT_EQ(1, descriptorsOn("/dev/i2c-3"));
    kernel.calls.clear();
    EXPECT_TRUE(moved.writeMulti("", 0));
    EXPECT_THAT(kernel.calls, ElementsAre("message 0050 0000 0000:"));
}

/// Without any bus.
class ClosedI2CSlaveTest : public BoardWorld {
protected:
    I2cCalls kernel;
    I2CSlave slave;
};

TEST_F(ClosedI2CSlaveTest, EveryTransferFails) {
    std::uint8_t byte = 0x77;
    std::uint16_t word = 0x7777;
    std::array<std::uint8_t, 4> bytes{};
    EXPECT_FALSE(slave.selectSlave(0x50));
    EXPECT_FALSE(slave.write(0, 0));
    EXPECT_FALSE(slave.write16(0, 0));
    EXPECT_EQ(-1, slave.read8(0));
    EXPECT_FALSE(slave.read(0, byte));
    EXPECT_FALSE(slave.read16(0, word));
    EXPECT_FALSE(slave.readMultiAt(0, bytes.data(), 4));
    EXPECT_FALSE(slave.writeMulti(bytes.data(), 4));
    EXPECT_EQ(0x77, byte);
    EXPECT_EQ(0x7777, word);
    EXPECT_THAT(kernel.calls, IsEmpty());
}

TEST_F(ClosedI2CSlaveTest, NothingIsLogged) {
    logEverything();
    slave.init(3, false);
    slave.selectSlave(0x50);
    slave.read8(0);
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

/// On bus 3 with slave 0x3E.
class OpenI2CSlaveTest : public I2CSlaveTest {
protected:
    OpenI2CSlaveTest() {
        slave.init(3, false);
        slave.selectSlave(0x3E);
    }

    /// What was asked of the kernel after the slave was selected.
    std::vector<std::string> transfers() const { return {kernel.calls.begin() + 1, kernel.calls.end()}; }

    I2CSlave slave;
};

TEST_F(OpenI2CSlaveTest, SelectingASlaveAsksTheKernelOnce) {
    EXPECT_THAT(kernel.calls, ElementsAre("select 3e"));
    EXPECT_TRUE(slave.selectSlave(0x7F));
    EXPECT_THAT(kernel.calls, ElementsAre("select 3e", "select 7f"));
}

TEST_F(OpenI2CSlaveTest, AnAddressIsKeptEvenWhenTheKernelRefusesIt) {
    kernel.failing = 1;
    EXPECT_FALSE(slave.selectSlave(0x50));
    EXPECT_TRUE(slave.writeMulti("", 0));
    EXPECT_THAT(kernel.calls, ElementsAre("select 3e", "select 50", "message 0050 0000 0000:"));
}

TEST_F(OpenI2CSlaveTest, WritesBytesAndWords) {
    EXPECT_TRUE(slave.write(0x11, 0xA5));
    EXPECT_TRUE(slave.write16(0x10, 0x12F4));
    EXPECT_THAT(transfers(), ElementsAre("write8 11=a5", "write16 10=12f4"));
}

TEST_F(OpenI2CSlaveTest, ReadsBytesAndWords) {
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

TEST_F(OpenI2CSlaveTest, AByteReadIsNeverNegative) {
    for (const int value : {0x00, 0x7F, 0x80, 0xFF}) {
        kernel.registers[0] = static_cast<std::uint8_t>(value);
        EXPECT_EQ(value, slave.read8(0));
    }
}

TEST_F(OpenI2CSlaveTest, AFailedWriteIsReported) {
    kernel.failing = 1;
    EXPECT_FALSE(slave.write(0x11, 0xA5));
    kernel.failing = 2;
    EXPECT_FALSE(slave.write16(0x11, 0xA5));
}

TEST_F(OpenI2CSlaveTest, AFailedReadLeavesTheValueAsItWas) {
    std::uint8_t byte = 0x77;
    std::uint16_t word = 0x7777;
    kernel.next[0x11] = {-1, -1, -1};
    EXPECT_EQ(-1, slave.read8(0x11));
    EXPECT_FALSE(slave.read(0x11, byte));
    EXPECT_FALSE(slave.read16(0x11, word));
    EXPECT_EQ(0x77, byte);
    EXPECT_EQ(0x7777, word);
}

TEST_F(OpenI2CSlaveTest, OnlyEightBitsOfARegistersNumberAreSent) {
    std::array<std::uint8_t, 1> bytes{};
    slave.write(0x1A5, 1);
    slave.read8(-1);
    slave.readMultiAt(0x1A5, bytes.data(), 1);
    EXPECT_THAT(transfers(), ElementsAre("write8 a5=01", "read8 ff", "message 003e 0000 0001: a5",
                                         "message 003e 4001 0001"));
}

TEST_F(OpenI2CSlaveTest, ReadsManyBytesWithoutARepeatedStartOnPurpose) {
    std::array<std::uint8_t, 5> bytes{};
    kernel.messageByte = 0x5A;
    EXPECT_TRUE(slave.readMultiAt(0x20, bytes.data(), 4));
    EXPECT_THAT(transfers(), ElementsAre("message 003e 0000 0001: 20", "message 003e 4001 0004"));
    EXPECT_THAT(bytes, ElementsAre(0x5A, 0x5A, 0x5A, 0x5A, 0));
}

TEST_F(OpenI2CSlaveTest, ReadingManyBytesSucceedsOnlyWithBothMessagesDone) {
    std::array<std::uint8_t, 4> bytes{};
    for (const int done : {-1, 0, 1, 2, 3, INT_MAX}) {
        kernel.messagesDone = done;
        EXPECT_EQ(done == 2, slave.readMultiAt(0x20, bytes.data(), 4)) << done;
    }
}

TEST_F(OpenI2CSlaveTest, WritesManyBytesAsOneMessage) {
    EXPECT_TRUE(slave.writeMulti("\x01\xFF\x00", 3));
    EXPECT_THAT(transfers(), ElementsAre("message 003e 0000 0003: 01 ff 00"));
}

TEST_F(OpenI2CSlaveTest, WritingManyBytesSucceedsOnlyWithOneMessageDone) {
    for (const int done : {-1, 0, 1, 2}) {
        kernel.messagesDone = done;
        EXPECT_EQ(done == 1, slave.writeMulti("x", 1)) << done;
    }
}

TEST_F(OpenI2CSlaveTest, SixteenBitsOfALengthCount) {
    std::array<std::uint8_t, 2> bytes{};
    EXPECT_TRUE(slave.readMultiAt(0, bytes.data(), 0x10002));
    EXPECT_TRUE(slave.writeMulti(bytes.data(), 0x10001));
    EXPECT_THAT(transfers(), ElementsAre("message 003e 0000 0001: 00", "message 003e 4001 0002",
                                         "message 003e 0000 0001: 00"));
}

TEST_F(OpenI2CSlaveTest, CheckReturnsTheObjectUnchanged) {
    EXPECT_EQ(&slave, &slave.check());
    EXPECT_THAT(transfers(), IsEmpty());
}

}  // namespace
