#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "Tools/boardsim/Host/Descriptor.h"

namespace boardsim {

/// The memory behind the mapped register device, as boardsim sees it: 32-bit registers at byte offsets. A
/// device cannot be cut: when a program truncates the file, it has its full size again with the next store.
class SharedRegisters {
public:
    /// Maps the whole of `memory`, `bytes` long.
    /// @throws std::system_error
    SharedRegisters(Descriptor memory, std::size_t bytes);
    SharedRegisters(const SharedRegisters&) = delete;
    SharedRegisters& operator=(const SharedRegisters&) = delete;
    ~SharedRegisters();

    /// Sets a register in one access, so that the program sees the old value or the new one.
    /// @param offset a multiple of 4 inside the memory.
    void store(std::uint32_t offset, std::uint32_t value);

    /// All registers. Where a program cuts the file they are gone until this is asked for again.
    std::span<std::uint32_t> words();

private:
    void restoreSize() const;

    Descriptor memory_;
    std::uint32_t* words_;
    std::size_t bytes_;
};

}  // namespace boardsim
