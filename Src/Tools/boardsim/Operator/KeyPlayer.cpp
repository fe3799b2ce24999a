#include "Tools/boardsim/Operator/KeyPlayer.h"

#include <algorithm>

namespace boardsim {

void KeyPlayer::frameSeen(Clock::time_point now) {
    frameSeen_ = true;
    answered_ = true;
    screenTime_ = now;
    begin(now + kPatience);
}

void KeyPlayer::stateSeen(Clock::time_point now) {
    answered_ = true;
    screenTime_ = now;
    if (frameSeen_) {
        begin(now);
    }
}

void KeyPlayer::screenUseless(Clock::time_point now) {
    begin(now);
}

void KeyPlayer::begin(Clock::time_point when) {
    const bool isSooner = next_ == 0 && when < stepTime_;
    if (!ready_ || isSooner) {
        ready_ = true;
        stepTime_ = when;
    }
}

std::optional<KeyPlayer::Clock::time_point> KeyPlayer::due() const {
    if (!ready_ || remaining() == 0) {
        return std::nullopt;
    }
    const KeyStep& step = steps_[next_];
    if (step.strokes.empty()) {
        return stepTime_ + step.pause;
    }
    if (answered_) {
        return std::max(screenTime_ + kQuiet, stepTime_);
    }
    return std::max(screenTime_, stepTime_) + kPatience;
}

const KeyStep* KeyPlayer::play(Clock::time_point now) {
    const std::optional<Clock::time_point> when = due();
    if (!when || now < *when) {
        return nullptr;
    }
    const KeyStep& step = steps_[next_++];
    stepTime_ = now;
    if (!step.strokes.empty()) {
        answered_ = false;
    }
    return &step;
}

}  // namespace boardsim
