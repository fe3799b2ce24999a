#pragma once

#include <functional>
#include <string_view>

namespace boardsim {

/// Takes what happens on a board, in the words of the trace. What is repeatable comes in long rows when a
/// program polls.
using Teller = std::function<void(std::string_view event, bool isRepeatable)>;

}  // namespace boardsim
