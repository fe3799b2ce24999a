#include "Tools/boardsim/Host/I2cBusFile.h"

#include <linux/i2c-dev.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <vector>

#include "Tools/boardsim/Host/CallerMemory.h"
#include "Tools/boardsim/Host/SmbusTransfer.h"

namespace boardsim {
namespace {

constexpr std::errc kNotSupported = std::errc::operation_not_supported;

constexpr std::size_t kLongestMessage = 8192;
constexpr std::uint64_t kLargestAddress = 0x7F;
constexpr unsigned kKnownFlags = I2C_M_RD | I2C_M_NOSTART | I2C_M_RECV_LEN | I2C_M_DMA_SAFE;

IoctlAnswer toAnswer(std::errc error, int value = 0) {
    return {error == std::errc{} ? value : 0, error};
}

std::uint64_t addressOf(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

/// A counted message has room for the longest block; its first byte says how many bytes come beside the
/// block, of which an adapter without packet error codes has the count alone.
bool isWellCounted(const i2c_msg& record, std::span<const std::uint8_t> bytes) {
    return (record.flags & I2C_M_RD) != 0 && !bytes.empty() && bytes[0] >= 1 &&
           bytes.size() >= std::size_t{bytes[0]} + I2C_SMBUS_BLOCK_MAX;
}

bool isPossible(const i2c_msg& record, unsigned long functions) {
    const bool goesOn = (record.flags & I2C_M_NOSTART) != 0;
    return (functions & I2C_FUNC_I2C) != 0 && (record.flags & ~kKnownFlags) == 0 &&
           record.addr <= kLargestAddress && (!goesOn || (functions & I2C_FUNC_NOSTART) != 0);
}

/// Makes a message of a program's record. The bytes are copied whatever the direction: those to be read must
/// be there, too.
std::errc fetch(const CallerMemory& memory, const i2c_msg& record, I2cMessage& message) {
    if (record.len > kLongestMessage) {
        return std::errc::invalid_argument;
    }
    message.bytes.resize(record.len);
    const std::errc error =
        memory.read(addressOf(record.buf), std::as_writable_bytes(std::span(message.bytes)));
    if (error != std::errc{}) {
        return error;
    }
    message.address = static_cast<std::uint8_t>(record.addr & kLargestAddress);
    message.direction = (record.flags & I2C_M_RD) != 0 ? I2cDirection::Read : I2cDirection::Write;
    message.continues = (record.flags & I2C_M_NOSTART) != 0;
    message.isCounted = (record.flags & I2C_M_RECV_LEN) != 0;
    const bool isSound = !message.isCounted || isWellCounted(record, message.bytes);
    return isSound ? std::errc{} : std::errc::invalid_argument;
}

/// Copies what was read to where the program wants it.
std::errc handBack(const CallerMemory& memory, const i2c_msg& record, const I2cMessage& message) {
    if (message.direction == I2cDirection::Write) {
        return {};
    }
    return memory.write(addressOf(record.buf), std::as_bytes(std::span(message.bytes)));
}

}  // namespace

/// What answers a request. A request without function is taken and means nothing, unless its argument is
/// larger than `largest`: then it is refused.
struct I2cBusFile::Request {
    unsigned number;
    std::errc refusal{};
    IoctlAnswer (I2cBusFile::*answer)(const IoctlCall&) = nullptr;
    std::uint64_t largest = 0;
};

const I2cBusFile::Request I2cBusFile::kRequests[] = {
    {I2C_SLAVE, {}, &I2cBusFile::choose},
    {I2C_SLAVE_FORCE, {}, &I2cBusFile::force},
    {I2C_FUNCS, {}, &I2cBusFile::tellFunctions},
    {I2C_RDWR, {}, &I2cBusFile::transferMessages},
    {I2C_SMBUS, {}, &I2cBusFile::transferSmbus},
    {I2C_TENBIT, kNotSupported},
    {I2C_PEC, kNotSupported},
    // The virtual bus needs neither patience nor a second try.
    {I2C_RETRIES, std::errc::invalid_argument, nullptr, INT_MAX},
    {I2C_TIMEOUT, std::errc::invalid_argument, nullptr, INT_MAX},
};

Transfer I2cBusFile::read(std::span<std::byte> into) {
    if ((functions_ & I2C_FUNC_I2C) == 0) {
        return {0, kNotSupported};
    }
    I2cMessage message{address_, I2cDirection::Read};
    message.bytes.resize(std::min(into.size(), kLongestMessage));
    const std::errc error = bus_.transfer({&message, 1});
    if (error != std::errc{}) {
        return {0, error};
    }
    std::memcpy(into.data(), message.bytes.data(), message.bytes.size());
    return {message.bytes.size()};
}

Transfer I2cBusFile::write(std::span<const std::byte> bytes) {
    if ((functions_ & I2C_FUNC_I2C) == 0) {
        return {0, kNotSupported};
    }
    I2cMessage message{address_, I2cDirection::Write};
    message.bytes.resize(std::min(bytes.size(), kLongestMessage));
    std::memcpy(message.bytes.data(), bytes.data(), message.bytes.size());
    const std::errc error = bus_.transfer({&message, 1});
    return {error == std::errc{} ? message.bytes.size() : 0, error};
}

IoctlAnswer I2cBusFile::control(const IoctlCall& call) {
    const auto* const request =
        std::find_if(std::begin(kRequests), std::end(kRequests),
                     [&](const Request& each) { return each.number == call.request; });
    if (request == std::end(kRequests)) {
        return {0, std::errc::inappropriate_io_control_operation};
    }
    if (request->answer != nullptr) {
        return (this->*request->answer)(call);
    }
    return toAnswer(call.argument > request->largest ? request->refusal : std::errc{});
}

IoctlAnswer I2cBusFile::choose(const IoctlCall& call) {
    const bool isBusy =
        call.argument <= kLargestAddress && hasDriver_(static_cast<std::uint8_t>(call.argument));
    return isBusy ? toAnswer(std::errc::device_or_resource_busy) : force(call);
}

IoctlAnswer I2cBusFile::force(const IoctlCall& call) {
    if (call.argument > kLargestAddress) {
        return toAnswer(std::errc::invalid_argument);
    }
    address_ = static_cast<std::uint8_t>(call.argument);
    return {};
}

IoctlAnswer I2cBusFile::tellFunctions(const IoctlCall& call) {
    return toAnswer(CallerMemory(call.caller).writeRecord(call.argument, functions_));
}

IoctlAnswer I2cBusFile::transferMessages(const IoctlCall& call) {
    const CallerMemory memory(call.caller);
    i2c_rdwr_ioctl_data list{};
    if (const std::errc error = memory.readRecord(call.argument, list); error != std::errc{}) {
        return toAnswer(error);
    }
    if (list.msgs == nullptr || list.nmsgs == 0 || list.nmsgs > I2C_RDWR_IOCTL_MAX_MSGS) {
        return toAnswer(std::errc::invalid_argument);
    }
    std::vector<i2c_msg> records(list.nmsgs);
    if (const std::errc error = memory.read(addressOf(list.msgs), std::as_writable_bytes(std::span(records)));
        error != std::errc{}) {
        return toAnswer(error);
    }

    std::vector<I2cMessage> messages(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (const std::errc error = fetch(memory, records[i], messages[i]); error != std::errc{}) {
            return toAnswer(error);
        }
    }
    if (!std::all_of(records.begin(), records.end(),
                     [this](const i2c_msg& record) { return isPossible(record, functions_); })) {
        return toAnswer(kNotSupported);
    }
    std::errc error = bus_.transfer(messages);
    for (std::size_t i = 0; i < records.size() && error == std::errc{}; ++i) {
        error = handBack(memory, records[i], messages[i]);
    }
    return toAnswer(error, static_cast<int>(records.size()));
}

IoctlAnswer I2cBusFile::transferSmbus(const IoctlCall& call) {
    const CallerMemory memory(call.caller);
    i2c_smbus_ioctl_data request{};
    if (const std::errc error = memory.readRecord(call.argument, request); error != std::errc{}) {
        return toAnswer(error);
    }
    // The old form of the plain block operation always reads as much as there is room for.
    const bool isOldBlock = request.size == I2C_SMBUS_I2C_BLOCK_BROKEN;
    const SmbusOperation operation{request.read_write == I2C_SMBUS_READ, request.command,
                                   isOldBlock ? I2C_SMBUS_I2C_BLOCK_DATA : request.size};
    const std::optional<std::size_t> size = smbusDataBytes(operation);
    if (!size || request.read_write > I2C_SMBUS_READ || (*size > 0 && request.data == nullptr)) {
        return toAnswer(std::errc::invalid_argument);
    }
    i2c_smbus_data data;
    std::memset(&data, 0, sizeof data);  // braces would clear the union's first member only
    const std::span<std::byte> bytes = std::as_writable_bytes(std::span(&data, 1)).first(*size);
    if (takesSmbusData(operation)) {
        if (const std::errc error = memory.read(addressOf(request.data), bytes); error != std::errc{}) {
            return toAnswer(error);
        }
    }
    if (isOldBlock && operation.reads) {
        data.block[0] = I2C_SMBUS_BLOCK_MAX;
    }
    if (!isSmbusPossible(operation, functions_)) {
        return toAnswer(kNotSupported);
    }
    std::errc error = smbusTransfer(bus_, address_, operation, data);
    if (error == std::errc{} && givesSmbusData(operation)) {
        error = memory.write(addressOf(request.data), bytes);
    }
    return toAnswer(error);
}

ActingFile i2cBusFile(std::string path, I2cBus& bus, I2cBusFile::HasDriver hasDriver,
                      unsigned long functions) {
    return {std::move(path), [&bus, hasDriver = std::move(hasDriver), functions] {
                const auto file = std::make_shared<I2cBusFile>(bus, hasDriver, functions);
                FileCalls calls;
                calls.read = [file](std::uint64_t, std::span<std::byte> into) { return file->read(into); };
                calls.write = [file](std::uint64_t, std::span<const std::byte> bytes) {
                    return file->write(bytes);
                };
                calls.ioctl = [file](const IoctlCall& call) { return file->control(call); };
                return calls;
            }};
}

}  // namespace boardsim
