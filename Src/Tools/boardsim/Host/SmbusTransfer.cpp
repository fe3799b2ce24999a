#include "Tools/boardsim/Host/SmbusTransfer.h"

#include <algorithm>
#include <array>
#include <vector>

namespace boardsim {
namespace {

/// What the kernel says of an operation. Calls send and receive, whatever direction is given.
struct Row {
    std::uint32_t kind;
    std::size_t dataBytes;
    bool isCall;
    unsigned long readFunction;
    unsigned long writeFunction;
};

constexpr std::size_t kBlock = I2C_SMBUS_BLOCK_MAX + 2;

constexpr std::array<Row, 8> kRows{{
    {I2C_SMBUS_QUICK, 0, false, I2C_FUNC_SMBUS_QUICK, I2C_FUNC_SMBUS_QUICK},
    {I2C_SMBUS_BYTE, 1, false, I2C_FUNC_SMBUS_READ_BYTE, I2C_FUNC_SMBUS_WRITE_BYTE},
    {I2C_SMBUS_BYTE_DATA, 1, false, I2C_FUNC_SMBUS_READ_BYTE_DATA, I2C_FUNC_SMBUS_WRITE_BYTE_DATA},
    {I2C_SMBUS_WORD_DATA, 2, false, I2C_FUNC_SMBUS_READ_WORD_DATA, I2C_FUNC_SMBUS_WRITE_WORD_DATA},
    {I2C_SMBUS_PROC_CALL, 2, true, I2C_FUNC_SMBUS_PROC_CALL, I2C_FUNC_SMBUS_PROC_CALL},
    {I2C_SMBUS_BLOCK_DATA, kBlock, false, I2C_FUNC_SMBUS_READ_BLOCK_DATA, I2C_FUNC_SMBUS_WRITE_BLOCK_DATA},
    {I2C_SMBUS_BLOCK_PROC_CALL, kBlock, true, I2C_FUNC_SMBUS_BLOCK_PROC_CALL, I2C_FUNC_SMBUS_BLOCK_PROC_CALL},
    {I2C_SMBUS_I2C_BLOCK_DATA, kBlock, false, I2C_FUNC_SMBUS_READ_I2C_BLOCK, I2C_FUNC_SMBUS_WRITE_I2C_BLOCK},
}};

const Row* rowOf(const SmbusOperation& operation) {
    const auto* const row = std::find_if(kRows.begin(), kRows.end(),
                                         [&](const Row& each) { return each.kind == operation.kind; });
    return row == kRows.end() ? nullptr : row;
}

/// A byte to write is the command itself.
bool hasData(const SmbusOperation& operation) {
    const bool isByteToWrite = operation.kind == I2C_SMBUS_BYTE && !operation.reads;
    return operation.kind != I2C_SMBUS_QUICK && !isByteToWrite;
}

bool isCall(const SmbusOperation& operation) {
    const Row* const row = rowOf(operation);
    return row != nullptr && row->isCall;
}

bool isBlock(const SmbusOperation& operation) {
    const Row* const row = rowOf(operation);
    return row != nullptr && row->dataBytes == kBlock;
}

/// The bytes that follow the command.
std::vector<std::uint8_t> payload(const SmbusOperation& operation, const i2c_smbus_data& data) {
    switch (operation.kind) {
        case I2C_SMBUS_BYTE_DATA:
            return {data.byte};
        case I2C_SMBUS_WORD_DATA:
        case I2C_SMBUS_PROC_CALL:
            return {static_cast<std::uint8_t>(data.word), static_cast<std::uint8_t>(data.word >> 8)};
        case I2C_SMBUS_BLOCK_DATA:
        case I2C_SMBUS_BLOCK_PROC_CALL:
            return {data.block, data.block + 1 + data.block[0]};
        case I2C_SMBUS_I2C_BLOCK_DATA:
            return {data.block + 1, data.block + 1 + data.block[0]};
        default:
            return {};
    }
}

I2cMessage answerTo(const SmbusOperation& operation, std::uint8_t address, const i2c_smbus_data& data) {
    I2cMessage message{address, I2cDirection::Read};
    message.isCounted = operation.kind == I2C_SMBUS_BLOCK_DATA || operation.kind == I2C_SMBUS_BLOCK_PROC_CALL;
    const bool isPlainBlock = operation.kind == I2C_SMBUS_I2C_BLOCK_DATA;
    const std::size_t fixed = isBlock(operation) ? 1 : rowOf(operation)->dataBytes;
    message.bytes.resize(isPlainBlock ? data.block[0] : fixed);
    return message;
}

std::vector<I2cMessage> messagesOf(const SmbusOperation& operation, std::uint8_t address,
                                   const i2c_smbus_data& data) {
    if (operation.kind == I2C_SMBUS_QUICK) {
        return {{address, operation.reads ? I2cDirection::Read : I2cDirection::Write}};
    }
    if (operation.kind == I2C_SMBUS_BYTE && operation.reads) {
        return {answerTo(operation, address, data)};
    }
    I2cMessage command{address, I2cDirection::Write, {operation.command}};
    if (!operation.reads || isCall(operation)) {
        const std::vector<std::uint8_t> bytes = payload(operation, data);
        command.bytes.insert(command.bytes.end(), bytes.begin(), bytes.end());
    }
    std::vector<I2cMessage> messages{std::move(command)};
    if (givesSmbusData(operation)) {
        messages.push_back(answerTo(operation, address, data));
    }
    return messages;
}

void keepAnswer(const SmbusOperation& operation, const std::vector<std::uint8_t>& bytes,
                i2c_smbus_data& data) {
    if (operation.kind == I2C_SMBUS_I2C_BLOCK_DATA) {
        std::copy(bytes.begin(), bytes.end(), data.block + 1);
    } else if (isBlock(operation)) {
        std::copy(bytes.begin(), bytes.end(), data.block);
    } else if (bytes.size() == 1) {
        data.byte = bytes[0];
    } else {
        data.word = static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
    }
}

}  // namespace

std::optional<std::size_t> smbusDataBytes(const SmbusOperation& operation) {
    const Row* const row = rowOf(operation);
    if (row == nullptr) {
        return std::nullopt;
    }
    return hasData(operation) ? row->dataBytes : 0;
}

bool takesSmbusData(const SmbusOperation& operation) {
    // A plain block that is read says in front how much is wanted.
    const bool saysHowMuch = operation.kind == I2C_SMBUS_I2C_BLOCK_DATA;
    return hasData(operation) && (!operation.reads || isCall(operation) || saysHowMuch);
}

bool givesSmbusData(const SmbusOperation& operation) {
    return hasData(operation) && (operation.reads || isCall(operation));
}

bool isSmbusPossible(const SmbusOperation& operation, unsigned long functions) {
    const Row* const row = rowOf(operation);
    return row != nullptr && (functions & (operation.reads ? row->readFunction : row->writeFunction)) != 0;
}

std::errc smbusTransfer(I2cBus& bus, std::uint8_t address, const SmbusOperation& operation,
                        i2c_smbus_data& data) {
    if (isBlock(operation) && takesSmbusData(operation) && data.block[0] > I2C_SMBUS_BLOCK_MAX) {
        return std::errc::invalid_argument;
    }
    std::vector<I2cMessage> messages = messagesOf(operation, address, data);
    const std::errc error = bus.transfer(messages);
    if (error == std::errc{} && givesSmbusData(operation)) {
        keepAnswer(operation, messages.back().bytes, data);
    }
    return error;
}

}  // namespace boardsim
