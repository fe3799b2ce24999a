#include "Tools/boardsim/Host/RegisterTrap/Preload/LocalSocket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace boardsim {

namespace {

constexpr int kLowestDescriptor = 200;

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
        ::close(low);
    }
    descriptor_ = high >= 0 ? high : low;

    if (::connect(descriptor_, reinterpret_cast<const sockaddr*>(&address_), sizeof address_) == 0) {
        return true;
    }
    const int reason = errno;
    ::close(std::exchange(descriptor_, -1));
    errno = reason;
    return false;
}

}  // namespace boardsim
