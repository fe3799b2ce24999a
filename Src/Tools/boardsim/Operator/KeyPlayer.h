#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

#include "Tools/boardsim/Operator/KeyScript.h"

namespace boardsim {

/// An operator who follows a script as a patient person does: begins when the panel has got a first picture
/// and a state after it, or 500 ms after a first picture without a state, and takes each step only when the
/// program has answered the one before, with a picture or a state, and the screen has been quiet for 20 ms
/// since. A program that does not answer gets 500 ms before the operator goes on. On a panel that shows
/// nothing the operator begins after 500 ms. Pauses count from the step before them.
///
/// Knows no clock: every call says what time it is. Not thread-safe.
class KeyPlayer {
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::milliseconds kQuiet{20};
    static constexpr std::chrono::milliseconds kPatience{500};

    explicit KeyPlayer(std::vector<KeyStep> steps) : steps_(std::move(steps)) {}

    /// The program sent a picture, or a state.
    void frameSeen(Clock::time_point now);
    void stateSeen(Clock::time_point now);

    /// The program will never get a picture shown: without one to wait for, the operator begins by the clock.
    void screenUseless(Clock::time_point now);

    /// When play() will take the next step if nothing else happens; nothing while the operator waits for the
    /// program or is through.
    std::optional<Clock::time_point> due() const;

    /// Takes the next step if it is due. Pauses are over when they are taken.
    /// @return the step taken, which lives as long as the player; null when none was due.
    const KeyStep* play(Clock::time_point now);

    std::size_t remaining() const { return steps_.size() - next_; }

private:
    void begin(Clock::time_point when);

    std::vector<KeyStep> steps_;
    std::size_t next_ = 0;
    bool frameSeen_ = false;
    bool ready_ = false;     ///< it is known when the operator begins
    bool answered_ = false;  ///< something came to the screen since the last step
    Clock::time_point screenTime_{};
    Clock::time_point stepTime_{};  ///< of the last step; before the first: when the operator begins
};

}  // namespace boardsim
