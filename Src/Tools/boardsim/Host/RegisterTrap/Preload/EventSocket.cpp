#include "Tools/boardsim/Host/RegisterTrap/Preload/EventSocket.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <mutex>

#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"

namespace boardsim {

namespace {

/// A program that closes all descriptors, as daemons do, closes this one too, and may reuse its number.
bool isClosedByProgram(int reason) noexcept {
    return reason == EBADF || reason == ENOTSOCK || reason == ENOTCONN || reason == EDESTADDRREQ;
}

}  // namespace

void EventSocket::send(TrapEvent event) noexcept {
    const int errnoBefore = errno;
    event.process = ::getpid();
    event.thread = ::gettid();
    {
        const std::lock_guard guard(lock_);
        const bool sent = trySend(event) || (isClosedByProgram(errno) && socket_.connect() && trySend(event));
        if (!sent) {
            complain(errno);
        }
    }
    errno = errnoBefore;
}

bool EventSocket::trySend(const TrapEvent& event) const noexcept {
    return socket_.send(&event, sizeof event) == static_cast<long>(sizeof event);
}

void EventSocket::complain(int reason) noexcept {
    if (hasComplained_) {
        return;
    }
    hasComplained_ = true;
    const char* name = ::strerrorname_np(reason);
    MessageBuffer message;
    message << "boardsim: register accesses cannot be reported to " << socket_.path() << ": "
            << (name ? name : "?");
    message.print();
}

}  // namespace boardsim
