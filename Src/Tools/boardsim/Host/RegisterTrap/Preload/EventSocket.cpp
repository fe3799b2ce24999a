#include "Tools/boardsim/Host/RegisterTrap/Preload/EventSocket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <mutex>

#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"

namespace boardsim {

namespace {

constexpr int kLowestDescriptor = 200;

/// A program that closes all descriptors, as daemons do, closes this one too, and may reuse its number.
bool isClosedByProgram(int reason) noexcept {
    return reason == EBADF || reason == ENOTSOCK || reason == ENOTCONN || reason == EDESTADDRREQ;
}

}  // namespace

bool EventSocket::setPath(std::string_view path) noexcept {
    if (path.empty() || path.size() >= sizeof address_.sun_path) {
        return false;
    }
    address_ = {};
    address_.sun_family = AF_UNIX;
    std::ranges::copy(path, address_.sun_path);
    return true;
}

void EventSocket::send(TrapEvent event) noexcept {
    const int errnoBefore = errno;
    event.process = ::getpid();
    event.thread = ::gettid();
    {
        const std::lock_guard guard(lock_);
        const bool sent = trySend(event) || (isClosedByProgram(errno) && connect() && trySend(event));
        if (!sent) {
            complain(errno);
        }
    }
    errno = errnoBefore;
}

bool EventSocket::trySend(const TrapEvent& event) const noexcept {
    return ::send(descriptor_, &event, sizeof event, MSG_NOSIGNAL) == sizeof event;
}

bool EventSocket::connect() noexcept {
    const int low = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
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
    ::close(descriptor_);
    descriptor_ = -1;
    errno = reason;
    return false;
}

void EventSocket::complain(int reason) noexcept {
    if (hasComplained_) {
        return;
    }
    hasComplained_ = true;
    const char* name = ::strerrorname_np(reason);
    MessageBuffer message;
    message << "boardsim: register accesses cannot be reported to " << address_.sun_path << ": "
            << (name ? name : "?");
    message.print();
}

}  // namespace boardsim
