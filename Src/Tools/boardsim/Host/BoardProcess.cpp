#include "Tools/boardsim/Host/BoardProcess.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <exception>

#include "Tools/boardsim/Host/Init.h"
#include "Tools/boardsim/Host/SystemError.h"
#include "Tools/boardsim/Host/World.h"

namespace boardsim {
namespace {

/// Whatever ends the parent ends this process too.
void dieWithParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

void waitForEnd(pid_t process) {
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

/// Runs `life` in a new process, which then ends. What `life` throws is reported to the host.
template <typename Life>
pid_t startProcess(ControlChannel& host, Life life) {
    const pid_t process = fork();
    if (process < 0) {
        throw systemError("cannot make a process");
    }
    if (process != 0) {
        return process;
    }
    dieWithParent();
    try {
        life();
    } catch (const std::exception& failure) {
        try {
            host.send(ControlKind::Failed, 0, failure.what());
        } catch (const std::exception&) {
            // Nobody is left to tell.
        }
    }
    _exit(0);
}

void keepBoard(const WorldPlan& plan, const ProgramStart& start, ControlChannel& host) {
    makeWorld(plan, host);
    // The channel stays open here until process 1 is gone, and the kernel lets it go last of all: its end
    // means that nothing is left on the board.
    waitForEnd(startProcess(host, [&] { runInit(start, host); }));
}

}  // namespace

BoardProcess::BoardProcess(const WorldPlan& plan, const ProgramStart& start)
    : BoardProcess(plan, start, ControlChannel::makePair()) {}

BoardProcess::BoardProcess(const WorldPlan& plan, const ProgramStart& start,
                           std::pair<ControlChannel, ControlChannel> ends)
    : channel_(std::move(ends.first)), boardsim_(getpid()) {
    keeper_ = startProcess(ends.second, [&] {
        channel_.close();
        // The parent may have died before dieWithParent() could see it.
        if (getppid() == boardsim_) {
            keepBoard(plan, start, ends.second);
        }
    });
}

BoardProcess::~BoardProcess() {
    channel_.close();
    join();
}

void BoardProcess::signal(int number) {
    try {
        channel_.send(ControlKind::Signal, number);
    } catch (const std::system_error&) {
        // The program has ended meanwhile; the channel's end will say so.
    }
}

void BoardProcess::join() {
    if (keeper_ > 0) {
        waitForEnd(keeper_);
        keeper_ = -1;
    }
}

}  // namespace boardsim
