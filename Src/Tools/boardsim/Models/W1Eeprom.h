#pragma once

#include <array>
#include <bitset>
#include <optional>

#include "Tools/boardsim/Models/W1EepromMemory.h"
#include "Tools/boardsim/Models/W1Slave.h"

namespace boardsim {

/// A 1-Wire EEPROM of 128 bytes, family 0x2D, and the "eeprom" file that its kernel driver gives it.
///
/// The driver keeps every page that it has read and reads it again only after a write to the chip, whichever
/// page that went to. What came wrong over the wire therefore stays wrong until somebody writes. Writes go
/// through rows of eight bytes, each read, changed and copied. Reading at the end of the file gives nothing,
/// writing there fails with EFBIG, as with every binary file of sysfs; writing a protected row with EIO.
///
/// Not thread-safe. Source: DS2431 data sheet; the kernel's Documentation/w1/slaves/w1_ds2431.rst.
class W1Eeprom : public W1Slave {
public:
    static constexpr std::uint8_t kFamily = 0x2D;
    static constexpr std::size_t kBytes = W1EepromMemory::kDataBytes;

    explicit W1Eeprom(std::uint64_t serial) : W1Slave({kFamily, serial}) {}

    FileAnswer read(std::uint64_t offset, std::span<std::byte> into);
    FileAnswer write(std::uint64_t offset, std::span<const std::byte> bytes);
    std::vector<W1File> files() override;

    /// The chip itself, as its maker or a programmer sees it.
    W1EepromMemory& memory() { return memory_; }
    /// Puts bytes into the data memory, as production does.
    void preset(std::size_t offset, std::span<const std::byte> bytes);

    /// The power fails during writes, after `bytes` of their bytes were programmed; such a write ends with
    /// EIO.
    void tearWrites(const FaultSchedule& which, std::size_t bytes) { tears_ = Tears{which, bytes}; }

private:
    void fetchPage(std::size_t page);
    bool program(std::size_t offset, std::span<const std::byte> bytes);

    struct Tears {
        FaultSchedule which;
        std::size_t bytes;
    };

    W1EepromMemory memory_;
    std::array<std::byte, kBytes> cache_{};
    std::bitset<kBytes / W1EepromMemory::kPageBytes> cached_;
    std::optional<Tears> tears_;
};

}  // namespace boardsim
