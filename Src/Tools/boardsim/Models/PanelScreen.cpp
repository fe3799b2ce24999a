#include "Tools/boardsim/Models/PanelScreen.h"

#include <algorithm>

namespace boardsim {
namespace {

constexpr std::size_t kStateBytes = 2;
constexpr std::byte kStateOn{'1'};
constexpr std::byte kStateOff{'0'};

}  // namespace

PanelScreen::PanelScreen(PanelGeometry geometry, ScreenFault fault)
    : geometry_(geometry), fault_(fault), memory_(geometry.frameBytes()) {}

ScreenAnswer PanelScreen::write(std::uint64_t offset, std::span<const std::byte> bytes) {
    if (bytes.empty()) {
        return {};
    }
    if (fault_.habit == ScreenHabit::Fails) {
        return refuse(offset, bytes, std::errc::io_error);
    }
    const std::size_t count = acceptable(bytes.size());
    if (count == 0) {
        return refuse(offset, bytes, std::errc::no_space_on_device);
    }
    const bool isState = offset == 0 && bytes.size() == kStateBytes;
    const bool isPicture = offset < memory_.size() && bytes.size() <= memory_.size() - offset &&
                           (offset != 0 || bytes.size() > kStateBytes);
    if (!isState && !isPicture) {
        return refuse(offset, bytes, std::errc::invalid_argument);
    }
    taken_ += count;
    if (isState) {
        takeState(bytes.first(count));
    } else {
        takePicture(offset, bytes.first(count));
    }
    return {count};
}

ScreenAnswer PanelScreen::read(std::uint64_t offset, std::span<std::byte> into) {
    if (fault_.habit == ScreenHabit::Fails) {
        return refuse(offset, {}, std::errc::io_error);
    }
    if (offset != 0 || into.empty()) {
        return {};
    }
    into[0] = std::byte{lit_};
    notify({ScreenEvent::Kind::Read, offset, into.first(1)});
    return {1};
}

std::size_t PanelScreen::acceptable(std::size_t wanted) const {
    if (fault_.habit == ScreenHabit::TakesOneByte) {
        return 1;
    }
    if (fault_.habit == ScreenHabit::RunsFull) {
        return std::min(wanted, fault_.capacity - taken_);
    }
    return wanted;
}

ScreenAnswer PanelScreen::refuse(std::uint64_t offset, std::span<const std::byte> bytes, std::errc error) {
    notify({ScreenEvent::Kind::Refused, offset, bytes, error});
    return {0, error};
}

void PanelScreen::takeState(std::span<const std::byte> bytes) {
    if (bytes[0] == kStateOn || bytes[0] == kStateOff) {
        lit_ = bytes[0] == kStateOn;
    }
    notify({ScreenEvent::Kind::State, 0, bytes});
}

void PanelScreen::takePicture(std::size_t offset, std::span<const std::byte> bytes) {
    std::copy(bytes.begin(), bytes.end(), memory_.begin() + static_cast<std::ptrdiff_t>(offset));
    if (offset == 0) {
        filled_ = 0;
    }
    if (offset == filled_) {
        filled_ += bytes.size();
    }
    if (bytes.size() < memory_.size()) {
        notify({ScreenEvent::Kind::Piece, offset, bytes});
    }
    if (filled_ == memory_.size() && offset + bytes.size() == filled_) {
        shown_ = memory_;
        notify({ScreenEvent::Kind::Frame, 0, shown_});
    }
}

void PanelScreen::notify(const ScreenEvent& event) const {
    for (const Listener& listener : listeners_) {
        listener(event);
    }
}

}  // namespace boardsim
