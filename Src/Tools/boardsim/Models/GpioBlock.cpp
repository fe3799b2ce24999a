#include "Tools/boardsim/Models/GpioBlock.h"

#include <algorithm>

namespace boardsim {

GpioBlock::GpioBlock(std::vector<GpioChip> chips) : chips_(std::move(chips)) {
    for (const GpioChip& chip : chips_) {
        for (unsigned i = 0; i < chip.count; ++i) {
            lines_.push_back({chip.base + i});
        }
    }
}

const GpioBlock::Line* GpioBlock::find(unsigned line) const {
    const auto found =
        std::find_if(lines_.begin(), lines_.end(), [&](const Line& l) { return l.number == line; });
    return found == lines_.end() ? nullptr : &*found;
}

GpioBlock::Line* GpioBlock::find(unsigned line) {
    return const_cast<Line*>(static_cast<const GpioBlock*>(this)->find(line));
}

std::errc GpioBlock::request(unsigned line) {
    Line* found = find(line);
    if (found == nullptr) {
        return std::errc::invalid_argument;
    }
    if (found->taken) {
        return std::errc::device_or_resource_busy;
    }
    found->taken = true;
    return {};
}

std::errc GpioBlock::free(unsigned line) {
    Line* found = find(line);
    if (found == nullptr || !found->taken) {
        return std::errc::invalid_argument;
    }
    // Direction and level stay: a reset line that was set is to remain set.
    found->taken = false;
    return {};
}

std::errc GpioBlock::makeInput(unsigned line) {
    Line* found = find(line);
    if (found == nullptr) {
        return std::errc::invalid_argument;
    }
    found->output = false;
    return {};
}

std::errc GpioBlock::makeOutput(unsigned line, bool high) {
    Line* found = find(line);
    if (found == nullptr) {
        return std::errc::invalid_argument;
    }
    found->output = true;
    found->latch = high;
    return {};
}

std::errc GpioBlock::set(unsigned line, bool high) {
    Line* found = find(line);
    if (found == nullptr) {
        return std::errc::invalid_argument;
    }
    if (!found->output) {
        return std::errc::operation_not_permitted;
    }
    found->latch = high;
    return {};
}

std::optional<bool> GpioBlock::level(unsigned line) const {
    const Line* found = find(line);
    if (found == nullptr) {
        return std::nullopt;
    }
    return found->stuck.value_or(found->output ? found->latch : found->driven);
}

std::optional<bool> GpioBlock::isOutput(unsigned line) const {
    const Line* found = find(line);
    return found == nullptr ? std::nullopt : std::optional(found->output);
}

bool GpioBlock::isTaken(unsigned line) const {
    const Line* found = find(line);
    return found != nullptr && found->taken;
}

void GpioBlock::drive(unsigned line, bool high) {
    if (Line* found = find(line)) {
        found->driven = high;
    }
}

void GpioBlock::stick(unsigned line, bool high) {
    if (Line* found = find(line)) {
        found->stuck = high;
    }
}

}  // namespace boardsim
