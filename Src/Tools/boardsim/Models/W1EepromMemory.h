#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace boardsim {

/// The memory of a 1024-bit 1-Wire EEPROM: four pages of 32 bytes, then the register row, written in rows of
/// eight bytes through a scratchpad.
///
/// | address   | content                                                             | from the factory |
/// |-----------|---------------------------------------------------------------------|------------------|
/// | 0x00-0x7F | data memory, pages 0 to 3                                           | 0x00             |
/// | 0x80-0x83 | protection of one page each: 0x55 write-protected, 0xAA EPROM mode  | 0x00             |
/// | 0x84      | copy protection of 0x80-0x8F: 0x55 or 0xAA                          | 0x00             |
/// | 0x85      | factory byte, read-only: 0x55, the user bytes are free              | 0x55             |
/// | 0x86-0x87 | user bytes or maker's identification                                | 0x00             |
/// | 0x88-0x8F | reserved, reads as ones                                             | 0xFF             |
///
/// Not thread-safe. Source: DS2431 data sheet, "Memory", "Memory Access" and figure 5 (memory map).
class W1EepromMemory {
public:
    static constexpr std::size_t kDataBytes = 0x80;
    static constexpr std::size_t kPageBytes = 32;
    static constexpr std::size_t kRowBytes = 8;
    static constexpr std::size_t kBytes = 0x90;
    using Row = std::array<std::byte, kRowBytes>;

    W1EepromMemory();

    std::span<const std::byte> bytes() const { return bytes_; }

    /// What the scratchpad holds after WRITE SCRATCHPAD of `wanted` to `row`: in a write-protected page the
    /// memory's own bytes, in EPROM mode those that only clear bits.
    Row scratchpad(std::size_t row, const Row& wanted) const;

    /// WRITE SCRATCHPAD, READ SCRATCHPAD and COPY SCRATCHPAD as a driver does it, which goes no further when
    /// the scratchpad does not hold what it wrote.
    /// @param row number of the row, below kBytes / kRowBytes.
    /// @return whether the row was copied.
    bool program(std::size_t row, const Row& wanted);

private:
    enum class Protection { None, Write, Eprom };
    Protection protection(std::size_t row) const;

    std::array<std::byte, kBytes> bytes_{};
};

}  // namespace boardsim
