#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "Tools/boardsim/Host/RegisterTrap/RegisterObserver.h"

namespace boardsim {

/// A range of addresses that the program sees as registers, and the same file mapped a second time at
/// `alias`, where accesses are carried out.
struct Window {
    std::uintptr_t begin = 0;
    std::size_t length = 0;  ///< bytes, whole pages; 0: no window
    std::byte* alias = nullptr;
    std::uint64_t fileOffset = 0;  ///< of the first byte of the window
    bool readable = false;
    bool writable = false;
    RegisterObserver* observer = nullptr;

    bool contains(std::uintptr_t address) const noexcept { return address - begin < length; }
    bool touches(std::uintptr_t address, std::size_t size) const noexcept {
        return address < begin + length && begin < address + size;
    }
    std::span<std::byte> memory(std::uintptr_t address, std::size_t size) const noexcept {
        return {alias + (address - begin), size};
    }
};

}  // namespace boardsim
