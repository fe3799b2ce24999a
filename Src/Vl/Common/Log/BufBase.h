#pragma once

#include <array>
#include <cstddef>

namespace Valen::Log {

/// A fixed text buffer in which a message is built without heap allocation.
/// It holds 511 characters at most and always keeps room for the terminating zero; what does not fit is cut.
/// Not thread-safe.
class BufBase {
public:
    /// Appends at `at`, a position inside this buffer (begin() or what an earlier put returned).
    /// @return the position behind the last character copied.
    char* put(char* at, const char* text);

    char* begin() { return characters_.data(); }
    const char* text() const { return characters_.data(); }

private:
    char* last() { return characters_.data() + characters_.size() - 1; }

    std::array<char, 512> characters_{};
};

}  // namespace Valen::Log
