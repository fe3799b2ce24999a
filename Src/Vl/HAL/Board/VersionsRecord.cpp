#include "Vl/HAL/Board/VersionsRecord.h"

#include <charconv>
#include <cstddef>
#include <span>

#include "Vl/HAL/Board/Eeprom.h"

namespace Valen {
namespace {

using Bytes = std::span<const std::uint8_t>;

// Of the device description.
constexpr std::size_t kSerial = 6;
constexpr std::size_t kSerialSize = 7;
constexpr std::size_t kSerialTextSize = 9;
constexpr std::size_t kDeviceValue1 = 24;
constexpr std::size_t kDeviceValue2 = 32;
constexpr std::size_t kDeviceValueSize = 8;  // of which the low half counts

// Of the PCB description.
constexpr std::size_t kVersionLow = 40;
constexpr std::size_t kVersionHigh = 42;
constexpr std::size_t kRevision = 44;
constexpr std::size_t kRevisionSize = 3;

constexpr std::uint32_t kVersionMark = 0x03000000;

constexpr std::size_t kSerialDigits = 13;
constexpr std::uint64_t kLargestSerial = 9'999'999'999'999;

/// `size` bytes at `position` of a field; empty when the field ends before.
Bytes at(const eeprom::Field& field, std::size_t position, std::size_t size) {
    const Bytes body = field.body();
    const std::size_t start = position - eeprom::Field::kHeaderSize;
    return start + size <= body.size() ? body.subspan(start, size) : Bytes();
}

template <typename Word>
Word littleEndian(Bytes bytes) {
    Word word = 0;
    for (std::size_t index = 0; index < sizeof(Word); ++index) {
        word |= static_cast<Word>(Word{bytes[index]} << 8 * index);
    }
    return word;
}

unsigned int nibble(Bytes bytes, std::size_t index) {
    const unsigned int byte = bytes[index / 2];
    return index % 2 == 0 ? byte >> 4 : byte & 0xF;
}

std::uint64_t decimal(Bytes bytes) {
    std::uint64_t value = 0;
    for (std::size_t digit = 0; digit < kSerialDigits; ++digit) {
        value = 10 * value + nibble(bytes, digit);
    }
    return value <= kLargestSerial ? value : 0;
}

std::string hexadecimal(Bytes bytes) {
    std::string text;
    for (std::size_t digit = 0; digit < 2 * bytes.size(); ++digit) {
        text += "0123456789abcdef"[nibble(bytes, digit)];
    }
    return text;
}

void takeWord(const eeprom::Field& field, std::size_t position, std::uint32_t& value) {
    if (const Bytes bytes = at(field, position, kDeviceValueSize); !bytes.empty()) {
        value = littleEndian<std::uint32_t>(bytes);
    }
}

}  // namespace

void VersionsRecord::take(const eeprom::DeviceDescription& device) {
    if (const Bytes bytes = at(device, kSerial, kSerialSize); !bytes.empty()) {
        serial = decimal(bytes);
    }
    if (const Bytes bytes = at(device, kSerial, kSerialTextSize); !bytes.empty()) {
        serialText = hexadecimal(bytes);
    }
    takeWord(device, kDeviceValue1, deviceValue1);
    takeWord(device, kDeviceValue2, deviceValue2);
}

void VersionsRecord::take(const eeprom::PcbDescription& pcb) {
    const Bytes low = at(pcb, kVersionLow, sizeof(std::uint16_t));
    const Bytes high = at(pcb, kVersionHigh, sizeof(std::uint16_t));
    if (!low.empty() && !high.empty()) {
        // Meant: bits 8 to 15 are of both words.
        pcbVersion = littleEndian<std::uint16_t>(low) |
                     std::uint32_t{littleEndian<std::uint16_t>(high)} << 8 | kVersionMark;
    }
    if (const Bytes digits = at(pcb, kRevision, kRevisionSize); !digits.empty()) {
        const auto* text = reinterpret_cast<const char*>(digits.data());
        pcbRevision = 0;
        std::from_chars(text, text + digits.size(), pcbRevision, 16);
    }
}

}  // namespace Valen
