#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <system_error>

namespace boardsim {

/// What became of one read or write: the bytes moved, or the error that the program's call returns.
struct Transfer {
    std::size_t count = 0;
    std::errc error{};
};

/// A file whose every read and write is answered by a function. Writes arrive whole, as the program made
/// them, up to 1 MiB.
struct ActingFile {
    std::function<Transfer(std::uint64_t offset, std::span<std::byte> into)> read;
    std::function<Transfer(std::uint64_t offset, std::span<const std::byte> bytes)> write;
};

}  // namespace boardsim
