#include "Tools/boardsim/Host/RegisterTrap/Preload/LocalSocket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace boardsim {

namespace {

constexpr int kLowestDescriptor = 200;

// The C library's functions for these calls would let a thread be cancelled in the middle.
template <typename... Arguments>
long call(long number, Arguments... arguments) noexcept {
    long result = -1;
    do {
        result = ::syscall(number, arguments...);
    } while (result < 0 && errno == EINTR);
    return result;
}

}  // namespace

bool LocalSocket::setPath(std::string_view path) noexcept {
    if (path.empty() || path.size() >= sizeof address_.sun_path) {
        return false;
    }
    address_ = {};
    address_.sun_family = AF_UNIX;
    std::ranges::copy(path, address_.sun_path);
    return true;
}

bool LocalSocket::connect() noexcept {
    descriptor_ = -1;
    const int low = ::socket(AF_UNIX, type_ | SOCK_CLOEXEC, 0);
    if (low < 0) {
        return false;
    }
    // A low limit of open files leaves no room up there.
    const int high = ::fcntl(low, F_DUPFD_CLOEXEC, kLowestDescriptor);
    if (high >= 0) {
        ::syscall(SYS_close, low);
    }
    descriptor_ = high >= 0 ? high : low;

    if (call(SYS_connect, descriptor_, &address_, sizeof address_) == 0) {
        return true;
    }
    const int reason = errno;
    close();
    errno = reason;
    return false;
}

void LocalSocket::close() noexcept {
    ::syscall(SYS_close, std::exchange(descriptor_, -1));
}

long LocalSocket::send(const void* data, std::size_t size) const noexcept {
    return call(SYS_sendto, descriptor_, data, size, MSG_NOSIGNAL, nullptr, 0);
}

long LocalSocket::receive(void* data, std::size_t size) const noexcept {
    return call(SYS_recvfrom, descriptor_, data, size, 0, nullptr, nullptr);
}

}  // namespace boardsim
