#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <system_error>

namespace boardsim {

/// What became of one read or write: the bytes moved, or the error that the program's call returns.
struct Transfer {
    std::size_t count = 0;
    std::errc error{};
};

/// One ioctl() of the program. What `argument` means is the request's affair: a plain value, or an address in
/// the memory of the caller, which CallerMemory reads and writes.
struct IoctlCall {
    pid_t caller = 0;  ///< the calling thread, by its number in boardsim's process namespace
    unsigned request = 0;
    std::uint64_t argument = 0;
};

/// What ioctl() returns: a value that is not negative, or an error.
struct IoctlAnswer {
    int value = 0;
    std::errc error{};
};

/// What answers the calls on an open file. Writes arrive whole, as the program made them, up to 1 MiB. A
/// call that has no function is refused as the kernel does: read and write with EINVAL, ioctl with ENOTTY.
struct FileCalls {
    std::function<Transfer(std::uint64_t offset, std::span<std::byte> into)> read{};
    std::function<Transfer(std::uint64_t offset, std::span<const std::byte> bytes)> write{};
    std::function<IoctlAnswer(const IoctlCall& call)> ioctl{};
};

/// A file whose every call is answered by a function. `open` is called for each open() of a program and gives
/// what answers on this one opening, which processes may share; it is destroyed after the last close().
struct ActingFile {
    std::string path;  ///< where the program finds it
    std::function<FileCalls()> open;
};

/// A file on which it makes no difference who opened it.
inline ActingFile sharedFile(std::string path, FileCalls calls) {
    return {std::move(path), [calls = std::move(calls)] { return calls; }};
}

}  // namespace boardsim
