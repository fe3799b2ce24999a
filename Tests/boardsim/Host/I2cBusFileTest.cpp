// The kernel's i2c-dev interface. The caller of every request is the test itself.
#include "Tools/boardsim/Host/I2cBusFile.h"

#include <gmock/gmock.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

#include "Tools/boardsim/Models/VideoChip.h"

namespace {

using boardsim::I2cBus;
using boardsim::I2cBusFile;
using boardsim::IoctlAnswer;
using boardsim::VideoChip;
using testing::Each;
using testing::ElementsAre;

constexpr std::uint8_t kChip = 0x2A;
constexpr std::uint8_t kDriven = 0x50;  // has a kernel driver
constexpr std::uint8_t kNobody = 0x11;

std::uint64_t addressOf(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

class I2cBusFileTest : public testing::Test {
protected:
    I2cBusFileTest() {
        bus.attach(kChip, chip);
        bus.attach(kDriven, driven);
        for (unsigned i = 0; i < VideoChip::kRegisters; ++i) {
            chip.set(static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i));
        }
        control(I2C_SLAVE, kChip);
        std::memset(&data, 0, sizeof data);  // the whole union
    }

    /// @return the value, or the negative errno.
    int control(unsigned request, std::uint64_t argument) {
        const IoctlAnswer answer = file->control({getpid(), request, argument});
        return answer.error == std::errc{} ? answer.value : -static_cast<int>(answer.error);
    }

    int smbus(std::uint8_t reads, std::uint8_t command, std::uint32_t kind, i2c_smbus_data* block) {
        i2c_smbus_ioctl_data request{reads, command, kind, block};
        return control(I2C_SMBUS, addressOf(&request));
    }

    int transfer(std::vector<i2c_msg> messages) {
        i2c_rdwr_ioctl_data list{messages.data(), static_cast<std::uint32_t>(messages.size())};
        return control(I2C_RDWR, addressOf(&list));
    }

    I2cBus bus;
    VideoChip chip;
    VideoChip driven;
    I2cBusFile::HasDriver hasDriver = [](std::uint8_t address) { return address == kDriven; };
    std::unique_ptr<I2cBusFile> file = std::make_unique<I2cBusFile>(bus, hasDriver);
    i2c_smbus_data data;
};

i2c_msg writing(std::uint8_t* bytes, std::uint16_t count, std::uint16_t address = kChip) {
    return {address, 0, count, bytes};
}

i2c_msg reading(std::uint8_t* bytes, std::uint16_t count, std::uint16_t flags = I2C_M_RD) {
    return {kChip, flags, count, bytes};
}

struct RequestRow {
    const char* what;
    unsigned request;
    std::uint64_t argument;
    int result;
};

TEST_F(I2cBusFileTest, RequestsWithPlainNumbersAreCheckedAsTheKernelDoes) {
    const RequestRow rows[] = {
        {"the largest address", I2C_SLAVE, 0x7F, 0},
        {"an address of eight bits", I2C_SLAVE, 0x80, -EINVAL},
        {"a negative address", I2C_SLAVE, ~std::uint64_t{0}, -EINVAL},
        {"an address with a driver", I2C_SLAVE, kDriven, -EBUSY},
        {"the same by force", I2C_SLAVE_FORCE, kDriven, 0},
        {"too large by force", I2C_SLAVE_FORCE, 0x80, -EINVAL},
        {"an address where nobody is", I2C_SLAVE, kNobody, 0},
        {"seven bits", I2C_TENBIT, 0, 0},
        {"ten bits", I2C_TENBIT, 1, -EOPNOTSUPP},
        {"no error codes", I2C_PEC, 0, 0},
        {"error codes", I2C_PEC, 1, -EOPNOTSUPP},
        {"retries", I2C_RETRIES, 5, 0},
        {"too many retries", I2C_RETRIES, std::uint64_t{1} << 31, -EINVAL},
        {"timeout", I2C_TIMEOUT, 100, 0},
        {"too long a timeout", I2C_TIMEOUT, std::uint64_t{1} << 31, -EINVAL},
        {"a terminal's request", 0x5401, 0, -ENOTTY},
        {"the number between", 0x0702, 4, 0},
        {"an unknown number", 0x0709, 0, -ENOTTY},
    };
    for (const RequestRow& row : rows) {
        EXPECT_EQ(row.result, control(row.request, row.argument)) << row.what;
    }
}

TEST_F(I2cBusFileTest, TellsWhatTheAdapterCanDo) {
    unsigned long functions = 0;
    EXPECT_EQ(0, control(I2C_FUNCS, addressOf(&functions)));
    for (const int wanted :
         {I2C_FUNC_I2C, I2C_FUNC_NOSTART, I2C_FUNC_SMBUS_QUICK, I2C_FUNC_SMBUS_BYTE, I2C_FUNC_SMBUS_BYTE_DATA,
          I2C_FUNC_SMBUS_WORD_DATA, I2C_FUNC_SMBUS_BLOCK_DATA, I2C_FUNC_SMBUS_I2C_BLOCK}) {
        const auto bits = static_cast<unsigned long>(wanted);
        EXPECT_EQ(bits, functions & bits) << wanted;
    }
    EXPECT_EQ(0U, functions & I2C_FUNC_SMBUS_PEC);
    EXPECT_EQ(0U, functions & I2C_FUNC_10BIT_ADDR);
}

TEST_F(I2cBusFileTest, MemoryThatIsNotThereIsABadAddress) {
    i2c_smbus_ioctl_data request{I2C_SMBUS_READ, 0, I2C_SMBUS_BYTE_DATA,
                                 reinterpret_cast<i2c_smbus_data*>(8)};
    i2c_rdwr_ioctl_data list{reinterpret_cast<i2c_msg*>(8), 1};
    const RequestRow rows[] = {
        {"functions", I2C_FUNCS, 8, -EFAULT},
        {"SMBus request", I2C_SMBUS, 8, -EFAULT},
        {"SMBus data", I2C_SMBUS, addressOf(&request), -EFAULT},
        {"list", I2C_RDWR, 8, -EFAULT},
        {"messages", I2C_RDWR, addressOf(&list), -EFAULT},
    };
    for (const RequestRow& row : rows) {
        EXPECT_EQ(row.result, control(row.request, row.argument)) << row.what;
    }
    EXPECT_EQ(-EFAULT, transfer({reading(reinterpret_cast<std::uint8_t*>(8), 1)}));
    EXPECT_EQ(-EFAULT, transfer({writing(reinterpret_cast<std::uint8_t*>(8), 1)}));
}

TEST_F(I2cBusFileTest, SmbusReadsComeFromTheRegisters) {
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0x42, I2C_SMBUS_BYTE_DATA, &data));
    EXPECT_EQ(0x42, data.byte);
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0, I2C_SMBUS_BYTE, &data));
    EXPECT_EQ(0x43, data.byte) << "the next one";
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0x42, I2C_SMBUS_WORD_DATA, &data));
    EXPECT_EQ(0x4342, data.word) << "low byte first";
}

TEST_F(I2cBusFileTest, SmbusWritesGoToTheRegisters) {
    data.byte = 0x99;
    EXPECT_EQ(0, smbus(I2C_SMBUS_WRITE, 0x10, I2C_SMBUS_BYTE_DATA, &data));
    EXPECT_EQ(0x99, chip.at(0x10));
    data.word = 0x1234;
    EXPECT_EQ(0, smbus(I2C_SMBUS_WRITE, 0x10, I2C_SMBUS_WORD_DATA, &data));
    EXPECT_EQ(0x34, chip.at(0x10));
    EXPECT_EQ(0x12, chip.at(0x11));
    EXPECT_EQ(0, smbus(I2C_SMBUS_WRITE, 0x77, I2C_SMBUS_BYTE, nullptr));
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0, I2C_SMBUS_BYTE, &data));
    EXPECT_EQ(0x77, data.byte);
}

TEST_F(I2cBusFileTest, QuickCommandsAskWhoIsThere) {
    EXPECT_EQ(0, smbus(I2C_SMBUS_WRITE, 0, I2C_SMBUS_QUICK, nullptr));
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0, I2C_SMBUS_QUICK, nullptr));
    control(I2C_SLAVE, kNobody);
    EXPECT_EQ(-ENXIO, smbus(I2C_SMBUS_WRITE, 0, I2C_SMBUS_QUICK, nullptr));
}

TEST_F(I2cBusFileTest, PlainBlocksHaveTheirLengthInTheRequestOnly) {
    data.block[0] = 3;
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0x20, I2C_SMBUS_I2C_BLOCK_DATA, &data));
    EXPECT_THAT(std::vector(data.block, data.block + 5), ElementsAre(3, 0x20, 0x21, 0x22, 0));
    EXPECT_EQ(0, smbus(I2C_SMBUS_WRITE, 0x80, I2C_SMBUS_I2C_BLOCK_DATA, &data));
    EXPECT_EQ(0x20, chip.at(0x80));
    EXPECT_EQ(0x22, chip.at(0x82));
    EXPECT_EQ(0x83, chip.at(0x83));
}

TEST_F(I2cBusFileTest, TheOldPlainBlockReadsAsMuchAsThereIsRoomFor) {
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0x20, I2C_SMBUS_I2C_BLOCK_BROKEN, &data));
    EXPECT_EQ(32, data.block[0]);
    EXPECT_EQ(0x3F, data.block[32]);
}

TEST_F(I2cBusFileTest, CountedBlocksHaveTheirLengthOnTheBus) {
    chip.set(0x20, 2);
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0x20, I2C_SMBUS_BLOCK_DATA, &data));
    EXPECT_THAT(std::vector(data.block, data.block + 4), ElementsAre(2, 0x21, 0x22, 0));
    EXPECT_EQ(0, smbus(I2C_SMBUS_WRITE, 0x80, I2C_SMBUS_BLOCK_DATA, &data));
    EXPECT_EQ(2, chip.at(0x80));
    EXPECT_EQ(0x22, chip.at(0x82));
    EXPECT_EQ(-EPROTO, smbus(I2C_SMBUS_READ, 0x21, I2C_SMBUS_BLOCK_DATA, &data)) << "33 bytes";
}

TEST_F(I2cBusFileTest, ProcessCallsWriteAndRead) {
    data.word = 0x0102;
    EXPECT_EQ(0, smbus(I2C_SMBUS_WRITE, 0x10, I2C_SMBUS_PROC_CALL, &data));
    EXPECT_EQ(0x02, chip.at(0x10));
    EXPECT_EQ(0x1312, data.word) << "the registers behind";
}

struct SmbusRow {
    const char* what;
    std::uint8_t reads;
    std::uint32_t kind;
    bool hasData;
    std::uint8_t length;
    int result;
};

TEST_F(I2cBusFileTest, WrongSmbusRequestsAreRefusedAsTheKernelDoes) {
    const SmbusRow rows[] = {
        {"no such operation", I2C_SMBUS_READ, 9, true, 0, -EINVAL},
        {"neither reading nor writing", 2, I2C_SMBUS_BYTE_DATA, true, 0, -EINVAL},
        {"nowhere to read to", I2C_SMBUS_READ, I2C_SMBUS_BYTE, false, 0, -EINVAL},
        {"nothing to write", I2C_SMBUS_WRITE, I2C_SMBUS_WORD_DATA, false, 0, -EINVAL},
        {"too long a plain block", I2C_SMBUS_WRITE, I2C_SMBUS_I2C_BLOCK_DATA, true, 33, -EINVAL},
        {"too much wanted", I2C_SMBUS_READ, I2C_SMBUS_I2C_BLOCK_DATA, true, 33, -EINVAL},
        {"too long a block", I2C_SMBUS_WRITE, I2C_SMBUS_BLOCK_DATA, true, 255, -EINVAL},
        {"too long a block in a call", I2C_SMBUS_WRITE, I2C_SMBUS_BLOCK_PROC_CALL, true, 33, -EINVAL},
    };
    for (const SmbusRow& row : rows) {
        data.block[0] = row.length;
        EXPECT_EQ(row.result, smbus(row.reads, 0, row.kind, row.hasData ? &data : nullptr)) << row.what;
    }
    EXPECT_EQ(0, chip.at(0)) << "nothing was written";
}

TEST_F(I2cBusFileTest, CombinedTransfersReportHowManyMessagesWereDone) {
    std::array<std::uint8_t, 1> number{0x30};
    std::array<std::uint8_t, 4> bytes{};
    EXPECT_EQ(2, transfer({writing(number.data(), 1), reading(bytes.data(), 4)}));
    EXPECT_THAT(bytes, ElementsAre(0x30, 0x31, 0x32, 0x33));
    std::array<std::uint8_t, 3> values{0x60, 7, 8};
    EXPECT_EQ(1, transfer({writing(values.data(), 3)}));
    EXPECT_EQ(8, chip.at(0x61));
}

TEST_F(I2cBusFileTest, AReadWithoutRepeatedStartGoesOnWithTheChip) {
    std::array<std::uint8_t, 1> number{0x30};
    std::array<std::uint8_t, 2> bytes{};
    EXPECT_EQ(2, transfer({writing(number.data(), 1), reading(bytes.data(), 2, I2C_M_RD | I2C_M_NOSTART)}));
    EXPECT_THAT(bytes, ElementsAre(0x30, 0x31));
    EXPECT_EQ(-EINVAL, transfer({reading(bytes.data(), 2, I2C_M_RD | I2C_M_NOSTART)}));
}

TEST_F(I2cBusFileTest, AFailedTransferLeavesTheProgramsBytesAsTheyWere) {
    std::array<std::uint8_t, 2> bytes{0xEE, 0xEE};
    EXPECT_EQ(-ENXIO, transfer({reading(bytes.data(), 2), writing(bytes.data(), 1, kNobody)}));
    EXPECT_THAT(bytes, Each(0xEE));
}

TEST_F(I2cBusFileTest, ACountedReadNeedsRoomForTheLongestBlock) {
    chip.set(0, 2);
    std::array<std::uint8_t, 33> bytes{1};
    EXPECT_EQ(1, transfer({reading(bytes.data(), 33, I2C_M_RD | I2C_M_RECV_LEN)}));
    EXPECT_EQ(2, bytes[0]);
    bytes[0] = 1;
    EXPECT_EQ(-EINVAL, transfer({reading(bytes.data(), 32, I2C_M_RD | I2C_M_RECV_LEN)}));
    bytes[0] = 0;
    EXPECT_EQ(-EINVAL, transfer({reading(bytes.data(), 33, I2C_M_RD | I2C_M_RECV_LEN)}));
    EXPECT_EQ(-EINVAL, transfer({reading(bytes.data(), 33, I2C_M_RECV_LEN)}));
}

TEST_F(I2cBusFileTest, WrongMessagesAreRefusedAsTheKernelDoes) {
    std::vector<std::uint8_t> bytes(9000);
    EXPECT_EQ(1, transfer({reading(bytes.data(), 8192)}));
    EXPECT_EQ(-EINVAL, transfer({reading(bytes.data(), 8193)}));
    EXPECT_EQ(-EINVAL, transfer({}));
    EXPECT_EQ(42, transfer(std::vector(42, reading(bytes.data(), 1))));
    EXPECT_EQ(-EINVAL, transfer(std::vector(43, reading(bytes.data(), 1))));
    EXPECT_EQ(-EOPNOTSUPP, transfer({reading(bytes.data(), 1, I2C_M_RD | I2C_M_TEN)}));
    EXPECT_EQ(-EOPNOTSUPP, transfer({reading(bytes.data(), 1, I2C_M_RD | I2C_M_NO_RD_ACK)}));
    EXPECT_EQ(-EOPNOTSUPP, transfer({writing(bytes.data(), 1, 0x123)}));
    i2c_rdwr_ioctl_data noMessages{nullptr, 1};
    EXPECT_EQ(-EINVAL, control(I2C_RDWR, addressOf(&noMessages)));
}

TEST_F(I2cBusFileTest, PlainReadsAndWritesGoToTheChosenAddress) {
    std::array<std::byte, 3> bytes{std::byte{0x40}, std::byte{0xAA}, std::byte{0xBB}};
    EXPECT_EQ(3U, file->write(bytes).count);
    EXPECT_EQ(0xBB, chip.at(0x41));
    EXPECT_EQ(3U, file->read(bytes).count);
    EXPECT_THAT(bytes, ElementsAre(std::byte{0x42}, std::byte{0x43}, std::byte{0x44}));
    control(I2C_SLAVE, kNobody);
    EXPECT_EQ(std::errc::no_such_device_or_address, file->read(bytes).error);
    EXPECT_EQ(std::errc::no_such_device_or_address, file->write(bytes).error);
}

TEST_F(I2cBusFileTest, PlainTransfersEndAfter8192Bytes) {
    std::vector<std::byte> bytes(10000);
    EXPECT_EQ(8192U, file->read(bytes).count);
    EXPECT_EQ(8192U, file->write(bytes).count);
}

TEST_F(I2cBusFileTest, WhatTheAdapterCannotDoIsNotSupported) {
    file = std::make_unique<I2cBusFile>(bus, hasDriver, I2C_FUNC_SMBUS_READ_BYTE_DATA);
    control(I2C_SLAVE, kChip);
    std::array<std::uint8_t, 1> byte{};
    std::array<std::byte, 1> plain{};
    EXPECT_EQ(0, smbus(I2C_SMBUS_READ, 0x42, I2C_SMBUS_BYTE_DATA, &data));
    EXPECT_EQ(-EOPNOTSUPP, smbus(I2C_SMBUS_WRITE, 0x42, I2C_SMBUS_BYTE_DATA, &data));
    EXPECT_EQ(-EOPNOTSUPP, smbus(I2C_SMBUS_READ, 0x42, I2C_SMBUS_WORD_DATA, &data));
    EXPECT_EQ(-EOPNOTSUPP, transfer({reading(byte.data(), 1)}));
    EXPECT_EQ(std::errc::operation_not_supported, file->read(plain).error);
    EXPECT_EQ(std::errc::operation_not_supported, file->write(plain).error);
}

TEST_F(I2cBusFileTest, EachOpeningHasItsOwnAddress) {
    const boardsim::ActingFile device = boardsim::i2cBusFile("/dev/i2c-1", bus, hasDriver);
    EXPECT_EQ("/dev/i2c-1", device.path);
    const boardsim::FileCalls first = device.open();
    const boardsim::FileCalls second = device.open();
    first.ioctl({getpid(), I2C_SLAVE, kChip});
    std::array<std::byte, 1> byte{};
    EXPECT_EQ(1U, first.read(0, byte).count);
    EXPECT_EQ(std::errc::no_such_device_or_address, second.read(0, byte).error);
}

}  // namespace
