#include "Tools/boardsim/Models/W1TempSensor.h"

#include <algorithm>
#include <bit>

namespace boardsim {
namespace {

constexpr std::int32_t kColdest = -55 * 16;
constexpr std::int32_t kHottest = 125 * 16;
constexpr std::int32_t kInvalid = -1;

}  // namespace

void W1TempSensor::setTemperature(std::int32_t sixteenths) {
    temperature_ = std::clamp(sixteenths, kColdest, kHottest);
}

void W1TempSensor::setUserData(std::uint16_t value) {
    userBytes_ = {std::byte(value & 0xFF), std::byte(value >> 8)};
}

FileAnswer W1TempSensor::readTemperature(std::uint64_t offset, std::span<std::byte> into) {
    const FileAnswer admitted =
        admit(bytesBefore(sizeof temperature_, offset, into.size()), &W1Faults::shortReads);
    if (admitted.refused()) {
        return admitted;
    }
    const std::int32_t reading = happens(&W1Faults::crcErrors) ? kInvalid : temperature_;
    const auto bytes = std::bit_cast<std::array<std::byte, sizeof reading>>(reading);
    return readContents(bytes, offset, into.first(admitted.count));
}

FileAnswer W1TempSensor::readUserData(std::uint64_t offset, std::span<std::byte> into) {
    const FileAnswer admitted =
        admit(bytesBefore(userBytes_.size(), offset, into.size()), &W1Faults::shortReads);
    return admitted.refused() ? admitted : readContents(userBytes_, offset, into.first(admitted.count));
}

FileAnswer W1TempSensor::writeUserData(std::uint64_t offset, std::span<const std::byte> bytes) {
    if (offset >= userBytes_.size()) {
        return {0, std::errc::file_too_large};
    }
    const FileAnswer admitted =
        admit(bytesBefore(userBytes_.size(), offset, bytes.size()), &W1Faults::shortWrites);
    if (!admitted.refused()) {
        std::copy_n(bytes.begin(), admitted.count, userBytes_.begin() + static_cast<std::ptrdiff_t>(offset));
    }
    return admitted;
}

std::vector<W1File> W1TempSensor::files() {
    return {
        {"temp", sizeof temperature_,
         [this](std::uint64_t offset, std::span<std::byte> into) { return readTemperature(offset, into); }},
        {"user", userBytes_.size(),
         [this](std::uint64_t offset, std::span<std::byte> into) { return readUserData(offset, into); },
         [this](std::uint64_t offset, std::span<const std::byte> bytes) {
             return writeUserData(offset, bytes);
         }}};
}

}  // namespace boardsim
