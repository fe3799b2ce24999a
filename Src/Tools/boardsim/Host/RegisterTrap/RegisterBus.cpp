#include "Tools/boardsim/Host/RegisterTrap/RegisterBus.h"

#include <algorithm>
#include <cstring>

namespace boardsim {

namespace {

/// Whoever else maps the file must never see half a register: the lengths known here become one move each.
void copyInOnePiece(std::byte* to, const std::byte* from, std::size_t width) noexcept {
    switch (width) {
        case 1:
            std::memcpy(to, from, 1);
            break;
        case 2:
            std::memcpy(to, from, 2);
            break;
        case 4:
            std::memcpy(to, from, 4);
            break;
        case 8:
            std::memcpy(to, from, 8);
            break;
        default:
            std::memcpy(to, from, width);
    }
}

bool isWhollyInside(const Window& window, std::uintptr_t address, std::size_t width) noexcept {
    return window.contains(address) && window.contains(address + width - 1);
}

RegisterAccess describe(const Window& window, std::uintptr_t address, std::span<const std::byte> data,
                        Direction direction) noexcept {
    RegisterAccess access;
    access.offset = window.fileOffset + (address - window.begin);
    access.width = static_cast<std::uint8_t>(data.size());
    access.direction = direction;
    std::memcpy(&access.value, data.data(), std::min(data.size(), sizeof access.value));
    return access;
}

}  // namespace

bool RegisterBus::read(std::uintptr_t address, std::span<std::byte> data) const noexcept {
    const Window* window = table_.find(address, data.size());
    if (!window) {
        copyInOnePiece(data.data(), reinterpret_cast<const std::byte*>(address), data.size());
        return true;
    }
    if (!window->readable || !isWhollyInside(*window, address, data.size())) {
        return false;
    }

    const auto memory = window->memory(address, data.size());
    const auto answer = window->observer->beforeRead(memory, window->fileOffset + (address - window->begin));
    if (answer && data.size() <= sizeof *answer) {
        std::memcpy(data.data(), &*answer, data.size());
    } else {
        copyInOnePiece(data.data(), memory.data(), data.size());
    }
    window->observer->afterAccess(describe(*window, address, data, Direction::Read), memory);
    return true;
}

bool RegisterBus::write(std::uintptr_t address, std::span<const std::byte> data) const noexcept {
    const Window* window = table_.find(address, data.size());
    if (!window) {
        copyInOnePiece(reinterpret_cast<std::byte*>(address), data.data(), data.size());
        return true;
    }
    if (!window->writable || !isWhollyInside(*window, address, data.size())) {
        return false;
    }

    const auto memory = window->memory(address, data.size());
    copyInOnePiece(memory.data(), data.data(), data.size());
    window->observer->afterAccess(describe(*window, address, data, Direction::Write), memory);
    return true;
}

}  // namespace boardsim
