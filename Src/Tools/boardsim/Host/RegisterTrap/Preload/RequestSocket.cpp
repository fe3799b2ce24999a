#include "Tools/boardsim/Host/RegisterTrap/Preload/RequestSocket.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterReply.h"

namespace boardsim {

namespace {

// Not the C library's functions: those are points at which a thread can be cancelled, in here with the trap's
// lock taken.
long sendPacket(int socket, const void* data, std::size_t size) noexcept {
    return ::syscall(SYS_sendto, socket, data, size, MSG_NOSIGNAL, nullptr, 0);
}

long receivePacket(int socket, void* data, std::size_t size) noexcept {
    return ::syscall(SYS_recvfrom, socket, data, size, 0, nullptr, nullptr);
}

template <typename Call>
long whileInterrupted(Call call) noexcept {
    long result = -1;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

}  // namespace

std::optional<std::uint64_t> RequestSocket::ask(TrapEvent request) noexcept {
    const int errnoBefore = errno;
    request.process = ::getpid();
    request.thread = ::gettid();

    std::optional<std::uint64_t> answer;
    if (isOurs() || connect()) {
        answer = exchange(request);
        if (!answer) {
            complain(errno);
            disconnect();
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

void RequestSocket::disconnect() noexcept {
    ::syscall(SYS_close, socket_.descriptor());
    owner_ = 0;
}

std::optional<std::uint64_t> RequestSocket::exchange(const TrapEvent& request) const noexcept {
    const int socket = socket_.descriptor();
    if (whileInterrupted([&] { return sendPacket(socket, &request, sizeof request); }) < 0) {
        return std::nullopt;
    }
    RegisterReply reply;
    const long received = whileInterrupted([&] { return receivePacket(socket, &reply, sizeof reply); });
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
