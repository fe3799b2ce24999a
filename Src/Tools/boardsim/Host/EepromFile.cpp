#include "Tools/boardsim/Host/EepromFile.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

namespace boardsim {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPatience{25};
constexpr std::chrono::milliseconds kPause{1};
constexpr std::size_t kLongestRead = 128;

/// Tries until the chip answers: it does not while it is programming a page.
std::errc transferPatiently(I2cBus& bus, const std::vector<I2cMessage>& messages,
                            std::vector<I2cMessage>& done) {
    const Clock::time_point end = Clock::now() + kPatience;
    Clock::time_point tried;
    do {
        // The time is that before a try: however late this process comes to run, one follows in which the
        // chip had the time that it takes.
        tried = Clock::now();
        done = messages;
        if (bus.transfer(done) == std::errc{}) {
            return {};
        }
        std::this_thread::sleep_for(kPause);
    } while (tried < end);
    return std::errc::timed_out;
}

I2cMessage addressed(const EepromPlace& place, std::size_t offset) {
    I2cMessage message{place.address, I2cDirection::Write};
    for (std::size_t shift = 8 * place.addressBytes; shift > 0; shift -= 8) {
        message.bytes.push_back(static_cast<std::uint8_t>(offset >> (shift - 8)));
    }
    return message;
}

Transfer readMemory(I2cBus& bus, const EepromPlace& place, std::uint64_t offset, std::span<std::byte> into) {
    const std::size_t there = offset < place.bytes ? place.bytes - offset : 0;
    const std::size_t wanted = std::min(into.size(), there);
    std::vector<I2cMessage> done;
    for (std::size_t count = 0; count < wanted;) {
        I2cMessage answer{place.address, I2cDirection::Read};
        answer.bytes.resize(std::min(wanted - count, kLongestRead));
        const std::errc error = transferPatiently(bus, {addressed(place, offset + count), answer}, done);
        if (error != std::errc{}) {
            return {0, error};
        }
        std::memcpy(&into[count], done.back().bytes.data(), done.back().bytes.size());
        count += done.back().bytes.size();
    }
    return {wanted};
}

Transfer writeMemory(I2cBus& bus, const EepromPlace& place, std::uint64_t offset,
                     std::span<const std::byte> bytes) {
    if (offset >= place.bytes) {
        return {0, std::errc::file_too_large};
    }
    const std::size_t wanted = std::min<std::size_t>(bytes.size(), place.bytes - offset);
    std::vector<I2cMessage> done;
    for (std::size_t count = 0; count < wanted;) {
        const std::size_t position = offset + count;
        const std::size_t toPageEnd = place.pageBytes - position % place.pageBytes;
        const auto piece = bytes.subspan(count, std::min(wanted - count, toPageEnd));
        I2cMessage message = addressed(place, position);
        std::transform(piece.begin(), piece.end(), std::back_inserter(message.bytes),
                       [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
        if (const std::errc error = transferPatiently(bus, {message}, done); error != std::errc{}) {
            return {0, error};
        }
        count += piece.size();
    }
    return {wanted};
}

}  // namespace

ActingFile eepromFile(std::string path, I2cBus& bus, const EepromPlace& place) {
    FileCalls calls;
    calls.read = [&bus, place](std::uint64_t offset, std::span<std::byte> into) {
        return readMemory(bus, place, offset, into);
    };
    calls.write = [&bus, place](std::uint64_t offset, std::span<const std::byte> bytes) {
        return writeMemory(bus, place, offset, bytes);
    };
    return sharedFile(std::move(path), std::move(calls));
}

}  // namespace boardsim
