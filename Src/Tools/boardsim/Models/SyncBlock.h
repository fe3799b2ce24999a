#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "Tools/boardsim/Models/ModelClock.h"
#include "Tools/boardsim/Models/RegisterBlock.h"
#include "Tools/boardsim/Models/TimeCode.h"

namespace boardsim {

/// What a central sync block finds when its power comes on.
struct SyncSettings {
    std::uint64_t id = 0;      ///< of this card, 56 bits
    std::uint64_t master = 0;  ///< of the card that the others follow, 56 bits
    bool isMaster = false;     ///< whether this card is the one
    FrameRate rate = FrameRate::Fps25;
    std::uint32_t networkId = 0;  ///< of the network's configuration; 0 for none
    TimeCode timeCode{};          ///< from where it starts to run

    bool operator==(const SyncSettings&) const = default;
};

/// The central sync block of the FPGA: who sets the pace in the network, and the running time code. Its
/// registers are memory that a program maps; the block itself changes only two of them, once a frame.
///
/// | offset | bytes | access | content                                                                   |
/// |--------|-------|--------|---------------------------------------------------------------------------|
/// | 0x04   | 4 + 3 | read   | sync ID: low word, then at 0x08 its three high bytes                      |
/// | 0x0C   | 4     | read   | bit 0: this card is the master; bit 26: 25 frames in a second, 30 without |
/// | 0x10   | 4     | write  | ID of the network's configuration                                         |
/// | 0x1C   | 4 + 3 | read   | the master's sync ID: low word, then at 0x20 its three high bytes         |
/// | 0x34   | 4     | read   | sync word: counts the frames, from 0 at power-on, and wraps               |
/// | 0x38   | 8     | write  | time code: low word, then at 0x3C the high one; TimeCode.h names the bits |
///
/// A frame changes the two words of the time code at once and only if nobody wrote them meanwhile, else it
/// counts on from what was written: a program that reads high, low, high and finds the same twice has a whole
/// time code, and what it writes is never lost.
///
/// While one thread lets the frames pass, others may use the registers; all operations are for that one.
class SyncBlock final : public RegisterBlock {
public:
    static constexpr std::uint32_t kBytes = 0x40;
    static constexpr std::size_t kWords = kBytes / sizeof(std::uint32_t);
    using Words = std::array<std::uint32_t, kWords>;

    explicit SyncBlock(const SyncSettings& settings);

    /// What the registers hold after power-on.
    const Words& powerOnValues() const { return powerOn_; }

    /// From now on the block lives in `registers`, as they are, and its frames begin at `now`.
    /// @param registers 8-byte aligned; outlive the block.
    void attach(std::span<std::uint32_t, kWords> registers, ModelTime now);

    /// When the next frame begins; nothing before attach().
    std::optional<ModelTime> nextFrame() const;

    /// Lets all frames pass that have begun until `now`, however many. Over any time it is as many as the
    /// rate says: nothing adds up.
    void runUntil(ModelTime now);

    /// Lets so many frames pass at once. Needs attach().
    void pass(std::uint64_t frames);

    RegisterValue read(std::uint32_t offset, unsigned width) override;

    /// Says whether a program may write so. The memory behind the registers is the program's to change.
    Refusal write(std::uint32_t offset, unsigned width, std::uint64_t value) override;

private:
    ModelTime beginOf(std::uint64_t frame) const;

    FrameRate rate_;
    alignas(std::uint64_t) Words powerOn_;
    std::uint32_t* registers_ = nullptr;
    ModelTime start_{};
    std::uint64_t frames_ = 0;  ///< since start_
};

}  // namespace boardsim
