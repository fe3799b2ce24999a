#include "Tools/boardsim/Models/W1EepromMemory.h"

#include <algorithm>

namespace boardsim {
namespace {

constexpr std::size_t kPageProtection = 0x80;
constexpr std::size_t kCopyProtection = 0x84;
constexpr std::size_t kFactoryByte = 0x85;
constexpr std::size_t kReserved = 0x88;
constexpr std::byte kWriteProtected{0x55};
constexpr std::byte kEpromMode{0xAA};
constexpr std::byte kUserBytesAreFree{0x55};

bool isProtectionCode(std::byte byte) {
    return byte == kWriteProtected || byte == kEpromMode;
}

}  // namespace

W1EepromMemory::W1EepromMemory() {
    bytes_[kFactoryByte] = kUserBytesAreFree;
    std::fill(bytes_.begin() + kReserved, bytes_.end(), std::byte{0xFF});
}

W1EepromMemory::Protection W1EepromMemory::protection(std::size_t row) const {
    const std::size_t address = row * kRowBytes;
    if (address >= kReserved) {
        return Protection::Write;
    }
    if (address >= kPageProtection) {
        return isProtectionCode(bytes_[kCopyProtection]) ? Protection::Write : Protection::None;
    }
    const std::byte code = bytes_[kPageProtection + address / kPageBytes];
    if (code == kWriteProtected) {
        return Protection::Write;
    }
    return code == kEpromMode ? Protection::Eprom : Protection::None;
}

W1EepromMemory::Row W1EepromMemory::scratchpad(std::size_t row, const Row& wanted) const {
    const Protection kind = protection(row);
    Row pad = wanted;
    for (std::size_t i = 0; i < kRowBytes; ++i) {
        const std::size_t address = row * kRowBytes + i;
        const std::byte old = bytes_[address];
        // A protection code, once set, cannot be taken back.
        const bool isSetForGood =
            address >= kPageProtection && address <= kCopyProtection && isProtectionCode(old);
        if (kind == Protection::Write || address == kFactoryByte || isSetForGood) {
            pad[i] = old;
        } else if (kind == Protection::Eprom) {
            pad[i] &= old;
        }
    }
    return pad;
}

bool W1EepromMemory::program(std::size_t row, const Row& wanted) {
    if (scratchpad(row, wanted) != wanted) {
        return false;
    }
    std::copy(wanted.begin(), wanted.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(row * kRowBytes));
    return true;
}

}  // namespace boardsim
