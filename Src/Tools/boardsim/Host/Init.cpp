#include "Tools/boardsim/Host/Init.h"

#include <poll.h>
#include <sys/mount.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <optional>

#include "Tools/boardsim/Host/SocketRequests.h"
#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {
namespace {

/// Process numbers in /proc shall be those of the board. Where containers mask parts of /proc the kernel
/// refuses; programs then see the machine's, which does no harm.
void showOwnProcesses() {
    mount("proc", "/proc", "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC, nullptr);
}

/// A working directory below a cover still is the covered one; looked up again it is the one on the board.
void enterWorkingDirectoryAgain() {
    std::error_code stays;
    const std::filesystem::path here = std::filesystem::current_path(stays);
    if (!stays) {
        std::filesystem::current_path(here, stays);
    }
}

/// Where the kernel does not allow it, it answers itself.
void letHostAnswer(ControlChannel& host) {
    if (const Descriptor listener = interceptSocketRequests()) {
        host.send(ControlKind::SocketRequests, 0, {}, listener.get());
    }
}

pid_t startProgram(const ProgramStart& start) {
    const pid_t program = fork();
    if (program < 0) {
        throw systemError("cannot make a process");
    }
    if (program == 0) {
        becomeProgram(start);
    }
    return program;
}

Descriptor watchChildren() {
    sigset_t children;
    sigemptyset(&children);
    sigaddset(&children, SIGCHLD);
    Descriptor watch(signalfd(-1, &children, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!watch) {
        throw systemError("cannot watch for signals");
    }
    return watch;
}

/// @return the wait status of `program` once it is among the dead.
std::optional<int> buryTheDead(int watch, pid_t program) {
    signalfd_siginfo info{};
    while (read(watch, &info, sizeof info) > 0) {
    }
    std::optional<int> ended;
    int status = 0;
    for (pid_t dead = waitpid(-1, &status, WNOHANG); dead > 0; dead = waitpid(-1, &status, WNOHANG)) {
        if (dead == program) {
            ended = status;
        }
    }
    return ended;
}

}  // namespace

void runInit(const ProgramStart& start, ControlChannel& host) {
    showOwnProcesses();
    enterWorkingDirectoryAgain();
    if (start.asksAboutInterfaces) {
        letHostAnswer(host);
    }
    const Descriptor children = watchChildren();
    const pid_t program = startProgram(start);

    std::array<pollfd, 2> events{{{children.get(), POLLIN, 0}, {host.descriptor(), POLLIN, 0}}};
    for (;;) {
        if (poll(events.data(), events.size(), -1) < 0) {
            continue;
        }
        if (events[0].revents != 0) {
            if (const std::optional<int> ended = buryTheDead(children.get(), program)) {
                host.send(ControlKind::Ended, *ended);
                return;
            }
        }
        if (events[1].revents != 0) {
            const std::optional<ControlMessage> message = host.receive();
            if (!message) {
                return;
            }
            if (message->kind == ControlKind::Signal) {
                kill(program, message->value);
            }
        }
    }
}

}  // namespace boardsim
