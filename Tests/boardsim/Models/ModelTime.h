#pragma once

#include "Tools/boardsim/Models/ModelClock.h"

namespace models {

/// Time that passes when the test says so.
class ModelTime {
public:
    boardsim::ModelClock clock() {
        return [this] { return now_; };
    }
    void pass(std::chrono::nanoseconds duration) { now_ += duration; }

private:
    std::chrono::steady_clock::time_point now_{std::chrono::hours(1)};
};

}  // namespace models
