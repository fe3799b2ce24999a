#pragma once

#include <cstddef>
#include <cstdint>

#include "Tests/Support/RegisterWindow/RecordedRegisters.h"
#include "Tools/boardsim/Host/RegisterTrap/TrappedWindow.h"

namespace support {

/// A piece of memory that looks to the code under test like the registers of a device: every access to it is
/// recorded with width, offset, direction and value.
///
///     RegisterWindow window;
///     window.set32(0x10, 0x1234);
///     Driver driver(window.base());
///     driver.start();
///     EXPECT_THAT(window.accesses(), ElementsAre(Read32(0x10), Write32(0x0, 1)));
class RegisterWindow : public RecordedRegisters {
public:
    static constexpr std::size_t kDefaultLength = 0x10000;

    /// All registers are 0. @param length in bytes
    explicit RegisterWindow(std::size_t length = kDefaultLength);

    /// The address of the register at offset 0.
    volatile std::uint32_t* base() const { return static_cast<volatile std::uint32_t*>(window_.base()); }

    /// The address of a register by its byte offset.
    void* address(std::size_t offset = 0) const { return static_cast<std::byte*>(window_.base()) + offset; }

private:
    boardsim::TrappedWindow window_;
};

}  // namespace support
