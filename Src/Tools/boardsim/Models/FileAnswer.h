#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <system_error>

namespace boardsim {

/// What a kernel driver's file answers to a read or a write: the bytes moved, or the error of the call.
struct FileAnswer {
    std::size_t count = 0;
    std::errc error{};

    bool refused() const { return error != std::errc{}; }
};

/// How many of `wanted` bytes at `offset` a file of `size` bytes has.
constexpr std::size_t bytesBefore(std::size_t size, std::uint64_t offset, std::size_t wanted) {
    return offset >= size ? 0 : std::min(wanted, size - static_cast<std::size_t>(offset));
}

/// Reads from a file whose contents are `contents`.
inline FileAnswer readContents(std::span<const std::byte> contents, std::uint64_t offset,
                               std::span<std::byte> into) {
    const std::size_t count = bytesBefore(contents.size(), offset, into.size());
    if (count > 0) {
        std::copy_n(contents.begin() + static_cast<std::ptrdiff_t>(offset), count, into.begin());
    }
    return {count};
}

}  // namespace boardsim
