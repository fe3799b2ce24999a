#pragma once

#include <csignal>

namespace boardsim {

/// Blocks every signal of the calling thread while it lives.
class SignalBlocker {
public:
    SignalBlocker() noexcept {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalBlocker() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalBlocker(const SignalBlocker&) = delete;
    SignalBlocker& operator=(const SignalBlocker&) = delete;

private:
    sigset_t before_;
};

}  // namespace boardsim
