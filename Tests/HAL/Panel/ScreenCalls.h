#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// Sees the system calls that are made on files named "screen" while it lives, and lets writes be shorter
/// than asked or fail. The test program's own lseek and write lead here. One at a time.
class ScreenCalls {
public:
    ScreenCalls();
    ~ScreenCalls();

    /// "lseek 0", "write 15360": what was asked for, in order.
    std::vector<std::string> calls;
    /// No write takes more than this.
    std::size_t writeLimit = static_cast<std::size_t>(-1);
    /// Writes nothing and answers this instead; -1 means that a signal came in between.
    std::optional<int> writeAnswer;
};
