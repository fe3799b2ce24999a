#include "Tools/boardsim/Host/RegisterTrap/WindowTable.h"

#include <algorithm>

#include "Tools/boardsim/Host/RegisterTrap/SystemMapping.h"

namespace boardsim {

namespace {

Window part(const Window& whole, std::uintptr_t from, std::uintptr_t to) noexcept {
    Window result = whole;
    result.begin = from;
    result.length = to - from;
    result.alias += from - whole.begin;
    result.fileOffset += from - whole.begin;
    return result;
}

bool isFree(const Window& window) noexcept {
    return window.length == 0;
}

}  // namespace

bool WindowTable::add(const Window& window) noexcept {
    const auto slot = std::ranges::find_if(windows_, isFree);
    if (slot == windows_.end()) {
        return false;
    }
    *slot = window;
    return true;
}

const Window* WindowTable::find(std::uintptr_t address, std::size_t size) const noexcept {
    const auto found = std::ranges::find_if(
        windows_, [&](const Window& w) { return !isFree(w) && w.touches(address, size); });
    return found == windows_.end() ? nullptr : &*found;
}

void WindowTable::cut(std::uintptr_t address, std::size_t size) noexcept {
    const std::uintptr_t end = address + roundToPages(size);
    for (Window& slot : windows_) {
        if (isFree(slot) || !slot.touches(address, end - address)) {
            continue;
        }
        const Window whole = slot;
        const std::uintptr_t wholeEnd = whole.begin + whole.length;
        const std::uintptr_t holeBegin = std::max(address, whole.begin);
        const std::uintptr_t holeEnd = std::min(end, wholeEnd);

        systemUnmap(whole.alias + (holeBegin - whole.begin), holeEnd - holeBegin);
        slot = part(whole, whole.begin, holeBegin);
        if (holeEnd < wholeEnd) {
            add(part(whole, holeEnd, wholeEnd));
        }
    }
}

void WindowTable::removeAllOf(const RegisterObserver& observer) noexcept {
    for (Window& slot : windows_) {
        if (!isFree(slot) && slot.observer == &observer) {
            systemUnmap(slot.alias, slot.length);
            slot = {};
        }
    }
}

}  // namespace boardsim
