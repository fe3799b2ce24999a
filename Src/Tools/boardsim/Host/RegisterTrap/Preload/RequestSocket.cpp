#include "Tools/boardsim/Host/RegisterTrap/Preload/RequestSocket.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterReply.h"

namespace boardsim {

std::optional<std::uint64_t> RequestSocket::ask(TrapEvent request) noexcept {
    const int errnoBefore = errno;
    request.process = ::getpid();
    request.thread = ::gettid();

    std::optional<std::uint64_t> answer;
    if (isOurs() || connect()) {
        answer = exchange(request);
        if (!answer) {
            complain(errno);
            socket_.close();
        }
    } else {
        complain(errno);
    }

    errno = errnoBefore;
    return answer;
}

/// After a fork the connection is the parent's, whose answers it brings. And a program that closes all
/// descriptors, as daemons do, closes this one too, and may have a file of its own under its number.
bool RequestSocket::isOurs() const noexcept {
    struct stat status {};
    return socket_.descriptor() >= 0 && owner_ == ::getpid() && ::fstat(socket_.descriptor(), &status) == 0 &&
           status.st_dev == device_ && status.st_ino == inode_;
}

bool RequestSocket::connect() noexcept {
    struct stat status {};
    if (!socket_.connect() || ::fstat(socket_.descriptor(), &status) != 0) {
        return false;
    }
    owner_ = ::getpid();
    device_ = status.st_dev;
    inode_ = status.st_ino;
    return true;
}

std::optional<std::uint64_t> RequestSocket::exchange(const TrapEvent& request) const noexcept {
    if (socket_.send(&request, sizeof request) < 0) {
        return std::nullopt;
    }
    RegisterReply reply;
    const long received = socket_.receive(&reply, sizeof reply);
    if (received == static_cast<long>(sizeof reply)) {
        return reply.value;
    }
    if (received >= 0) {
        errno = ECONNRESET;  // the board has closed the connection
    }
    return std::nullopt;
}

void RequestSocket::complain(int reason) noexcept {
    if (hasComplained_) {
        return;
    }
    hasComplained_ = true;
    const char* name = ::strerrorname_np(reason);
    MessageBuffer message;
    message << "boardsim: nobody answers for the board's registers at " << socket_.path() << ": "
            << (name ? name : "?");
    message.print();
}

}  // namespace boardsim
