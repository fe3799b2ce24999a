#include "Tools/boardsim/Host/RegisterServer.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "Tools/boardsim/Host/RegisterTrap/RegisterReply.h"
#include "Tools/boardsim/Host/RegisterTrap/TrapEvent.h"

namespace boardsim {

RegisterServer::RegisterServer(Descriptor listener, EventLoop& loop, Answer answer)
    : listener_(std::move(listener)), loop_(loop), answer_(std::move(answer)) {
    loop_.watch(listener_.get(), [this] { accept(); });
}

RegisterServer::~RegisterServer() {
    loop_.unwatch(listener_.get());
    for (const Descriptor& program : programs_) {
        loop_.unwatch(program.get());
    }
}

void RegisterServer::accept() {
    Descriptor program(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!program) {
        return;
    }
    const int descriptor = program.get();
    programs_.push_back(std::move(program));
    loop_.watch(descriptor, [this, descriptor] { serve(descriptor); });
}

void RegisterServer::serve(int program) {
    if (!answerOne(program)) {
        leave(program);
    }
}

bool RegisterServer::answerOne(int program) {
    std::array<char, sizeof(TrapEvent) + 1> bytes{};
    const ssize_t received = recv(program, bytes.data(), bytes.size(), 0);
    if (received < 0) {
        return errno == EAGAIN || errno == EINTR;
    }
    if (received == 0) {
        return false;  // the program has ended or started another
    }
    const std::optional<std::uint64_t> value = answer_({bytes.data(), static_cast<std::size_t>(received)});
    if (!value) {
        return false;
    }
    const RegisterReply reply{*value};
    return send(program, &reply, sizeof reply, MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof reply);
}

void RegisterServer::leave(int program) {
    loop_.unwatch(program);
    std::erase_if(programs_, [&](const Descriptor& other) { return other.get() == program; });
}

}  // namespace boardsim
