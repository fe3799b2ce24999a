#include "Tools/boardsim/Board/IdentityMemory.h"

#include "Tools/boardsim/Board/EepromImage.h"

namespace boardsim {
namespace {

// From the start of the body, which lies behind six bytes of header.
constexpr std::size_t kValuesAt = 24 - 6;
constexpr std::size_t kDeviceBytes = kValuesAt + 2 * sizeof(std::uint64_t);
constexpr std::size_t kVersionAt = 40 - 6;
constexpr std::size_t kRevisionAt = 44 - 6;
constexpr std::size_t kRevisionBytes = 3;
constexpr std::size_t kPcbBytes = 42;

void putLittleEndian(std::string& bytes, std::size_t at, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i, value >>= 8) {
        bytes[at + i] = static_cast<char>(value & 0xFF);
    }
}

/// The 13 digits and the five of the suffix, two to a byte, the first in its high half.
std::string packDigits(const DeviceField& device) {
    constexpr std::size_t kSerialDigits = 13;
    constexpr std::size_t kSuffixDigits = 5;
    std::string digits(kSerialDigits + kSuffixDigits, '\0');
    std::uint64_t serial = device.serial;
    for (std::size_t i = kSerialDigits; i > 0; --i, serial /= 10) {
        digits[i - 1] = static_cast<char>(serial % 10);
    }
    std::uint32_t suffix = device.suffix;
    for (std::size_t i = digits.size(); i > kSerialDigits; --i, suffix >>= 4) {
        digits[i - 1] = static_cast<char>(suffix & 0xF);
    }
    std::string packed;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        packed += static_cast<char>(digits[i] << 4 | digits[i + 1]);
    }
    return packed;
}

EepromField fieldOf(const DeviceField& device) {
    EepromField field{EepromFieldType::Device, packDigits(device)};
    field.body.resize(kDeviceBytes, '\0');
    putLittleEndian(field.body, kValuesAt, device.values[0], sizeof(std::uint64_t));
    putLittleEndian(field.body, kValuesAt + sizeof(std::uint64_t), device.values[1], sizeof(std::uint64_t));
    return field;
}

EepromField fieldOf(const PcbField& pcb) {
    EepromField field{EepromFieldType::Pcb, std::string(kPcbBytes, '\0')};
    putLittleEndian(field.body, kVersionAt, pcb.minor, sizeof pcb.minor);
    putLittleEndian(field.body, kVersionAt + sizeof pcb.minor, pcb.major, sizeof pcb.major);
    for (std::size_t i = 0; i < kRevisionBytes && i < pcb.revision.size(); ++i) {
        field.body[kRevisionAt + i] = pcb.revision[i];
    }
    return field;
}

EepromField fieldOf(const std::vector<MacAddress>& macs) {
    EepromField field{EepromFieldType::MacAddresses, {}};
    for (const MacAddress& mac : macs) {
        field.body.append(mac.begin(), mac.end());
    }
    return field;
}

}  // namespace

std::string encodeIdentity(const IdentityMemory& memory) {
    std::vector<EepromField> fields;
    if (memory.device) {
        fields.push_back(fieldOf(*memory.device));
    }
    if (memory.pcb) {
        fields.push_back(fieldOf(*memory.pcb));
    }
    if (!memory.macs.empty()) {
        fields.push_back(fieldOf(memory.macs));
    }
    if (!memory.sandwich.empty()) {
        fields.push_back({EepromFieldType::Sandwich, memory.sandwich});
    }
    return encodeEeprom(fields);
}

}  // namespace boardsim
