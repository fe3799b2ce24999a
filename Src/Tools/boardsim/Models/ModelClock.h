#pragma once

#include <chrono>
#include <functional>

namespace boardsim {

/// Tells a model what time it is: some of what chips do takes a while. Never goes back.
using ModelClock = std::function<std::chrono::steady_clock::time_point()>;
using ModelTime = std::chrono::steady_clock::time_point;

}  // namespace boardsim
