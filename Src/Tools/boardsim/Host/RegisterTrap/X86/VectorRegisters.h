#pragma once

#include <ucontext.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace boardsim::X86 {

/// The vector registers 0 to 31 of an interrupted program, 64 bytes each, as far as the processor has them.
/// They lie scattered in the signal frame: layout from the Linux header asm/sigcontext.h and
/// Intel SDM volume 1, chapter 13 (standard format of the XSAVE area).
class VectorRegisters {
public:
    /// Asks the processor where it keeps what. Call it once before a signal handler needs it.
    static void findLayout() noexcept;

    explicit VectorRegisters(ucontext_t& context) noexcept;

    /// Copies bytes `from … from + data.size() - 1` of a register; whole lanes of 16 bytes or a part of one.
    void get(unsigned number, std::size_t from, std::span<std::byte> data) const noexcept;
    void set(unsigned number, std::size_t from, std::span<const std::byte> data) noexcept;

    /// Zeroes a register from byte `from` up to byte `to`, as far as the processor has it.
    void clear(unsigned number, std::size_t from, std::size_t to) noexcept;

private:
    /// Where the 16 bytes `lane` (0 to 3) of a register are kept.
    struct Place {
        unsigned component;  ///< of the XSAVE area
        std::size_t offset;  ///< in the frame's floating-point area
    };
    static Place place(unsigned number, std::size_t lane) noexcept;

    std::byte* lane(const Place& where) const noexcept;
    bool isPresent(unsigned component) const noexcept;
    bool isInUse(unsigned component) const noexcept;
    void use(unsigned component) noexcept;

    std::byte* area_;
    std::uint64_t present_ = 0;  ///< components that the frame has room for
};

}  // namespace boardsim::X86
