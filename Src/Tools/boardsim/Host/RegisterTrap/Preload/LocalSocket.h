#pragma once

#include <sys/un.h>

#include <cstddef>
#include <string_view>

namespace boardsim {

/// The program's end of a connection to a socket of the virtual board. Its descriptor is 200 or higher, so
/// that the program's own have the numbers that they have without it, and is not inherited by programs that
/// this one starts. Async-signal-safe, and no operation is a point at which a thread can be cancelled; not
/// thread-safe. Never destroyed: the descriptor stays open until the process ends.
class LocalSocket {
public:
    /// @param type SOCK_DGRAM or SOCK_SEQPACKET
    explicit constexpr LocalSocket(int type) noexcept : type_(type) {}

    /// Sets where connect() goes from now on.
    /// @return false when the path is empty or too long for a socket
    bool setPath(std::string_view path) noexcept;

    /// Empty until it is set.
    const char* path() const noexcept { return address_.sun_path; }

    int descriptor() const noexcept { return descriptor_; }

    /// Makes a new connection; what was open before is left as it is: the program may have closed it and use
    /// its number for a file of its own. @return false, with errno, when there is none now
    bool connect() noexcept;

    void close() noexcept;

    /// One message of `size` bytes. @return how many bytes went, or -1 and errno; never with a signal
    long send(const void* data, std::size_t size) const noexcept;

    /// Waits for a message. @return its length, 0 when the other side is gone, or -1 and errno
    long receive(void* data, std::size_t size) const noexcept;

private:
    sockaddr_un address_{};
    int type_;
    int descriptor_ = -1;
};

}  // namespace boardsim
