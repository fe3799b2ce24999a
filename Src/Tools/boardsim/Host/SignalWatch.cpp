#include "Tools/boardsim/Host/SignalWatch.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {
namespace {

constexpr int kForwarded[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGUSR1, SIGUSR2};

}  // namespace

SignalWatch::SignalWatch() {
    sigset_t wanted;
    sigemptyset(&wanted);
    for (const int number : kForwarded) {
        sigaddset(&wanted, number);
    }
    signals_ = Descriptor(signalfd(-1, &wanted, SFD_CLOEXEC | SFD_NONBLOCK));
    sigaddset(&wanted, SIGCHLD);
    if (!signals_ || sigprocmask(SIG_BLOCK, &wanted, &before_) != 0) {
        throw systemError("cannot watch for signals");
    }
}

SignalWatch::~SignalWatch() {
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

std::optional<int> SignalWatch::takeForwardable() {
    signalfd_siginfo info{};
    if (read(signals_.get(), &info, sizeof info) != static_cast<ssize_t>(sizeof info) ||
        info.ssi_code > SI_USER) {
        return std::nullopt;
    }
    return static_cast<int>(info.ssi_signo);
}

}  // namespace boardsim
