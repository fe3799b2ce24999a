#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <system_error>
#include <vector>

namespace boardsim {

/// Size of a panel in pixels; a pixel is two bytes, RGB 5-6-5, big-endian.
struct PanelGeometry {
    std::size_t width = 160;
    std::size_t height = 48;

    std::size_t frameBytes() const { return width * height * 2; }

    bool operator==(const PanelGeometry&) const = default;
};

/// What a screen does wrong on demand.
enum class ScreenHabit {
    Sound,
    TakesOneByte,  ///< takes the first byte of every write
    Fails,         ///< refuses every write and read with an I/O error
    RunsFull,      ///< takes `ScreenFault::capacity` bytes altogether, then no more
};

struct ScreenFault {
    ScreenHabit habit = ScreenHabit::Sound;
    std::size_t capacity = 0;
};

/// What a screen answers to a transfer: how many bytes it took or gave, or the reason why it refused.
struct ScreenAnswer {
    std::size_t count = 0;
    std::errc error{};

    bool refused() const { return error != std::errc{}; }
};

/// Something that happened to a screen. `bytes` are valid during the notification only.
struct ScreenEvent {
    enum class Kind { Frame, Piece, State, Read, Refused };

    Kind kind;
    std::uint64_t offset = 0;
    std::span<const std::byte> bytes{};
    std::errc error{};
};

/// The OLED panel as its kernel driver's "screen" attribute shows it: two bytes at offset 0 are a state, the
/// state character and a line feed; anything longer is picture memory, written from offset 0 to its end in
/// one write or in consecutive pieces. The panel shows a new picture when the last byte of it has arrived.
/// State '1' lights the panel and '0' darkens it; it starts dark.
///
/// Refuses what the panel has no meaning for: a single byte at offset 0, anything beyond the picture memory.
/// Not thread-safe.
class PanelScreen {
public:
    using Listener = std::function<void(const ScreenEvent&)>;

    explicit PanelScreen(PanelGeometry geometry = {}, ScreenFault fault = {});

    /// Takes one write of the program. A sound screen takes all of it or refuses it.
    ScreenAnswer write(std::uint64_t offset, std::span<const std::byte> bytes);

    /// Gives one byte at offset 0, 1 when lit and 0 when dark; nothing behind it.
    ScreenAnswer read(std::uint64_t offset, std::span<std::byte> into);

    /// The picture shown last, in the bytes and the order in which it was written; empty before the first.
    std::span<const std::byte> frame() const { return shown_; }

    bool lit() const { return lit_; }
    const PanelGeometry& geometry() const { return geometry_; }

    /// `listener` is called, after the change, for everything that happens to the screen.
    void listen(Listener listener) { listeners_.push_back(std::move(listener)); }

private:
    std::size_t acceptable(std::size_t wanted) const;
    ScreenAnswer refuse(std::uint64_t offset, std::span<const std::byte> bytes, std::errc error);
    void takeState(std::span<const std::byte> bytes);
    void takePicture(std::size_t offset, std::span<const std::byte> bytes);
    void notify(const ScreenEvent& event) const;

    PanelGeometry geometry_;
    ScreenFault fault_;
    std::vector<std::byte> memory_;
    std::size_t filled_ = 0;  ///< bytes of the picture that have arrived without a gap
    std::size_t taken_ = 0;   ///< bytes taken altogether
    std::vector<std::byte> shown_;
    bool lit_ = false;
    std::vector<Listener> listeners_;
};

}  // namespace boardsim
