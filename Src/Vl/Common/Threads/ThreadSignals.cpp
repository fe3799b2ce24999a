#include "Vl/Common/Threads/ThreadSignals.h"

#include <syslog.h>

#include <cerrno>
#include <csignal>

#include "Vl/Common/Log/BugReport.h"
#include "Vl/Common/Threads/Thread.h"

namespace Valen {
namespace {

void onSignal(int signal) {
    if (signal != SIGHUP) {
        return;
    }
    const int error = errno;
    report_bug("Deadlock?", true);
    syslog(LOG_ERR, "Deadlock? (see bugs.txt)");
    errno = error;
}

void catchSignal(int signal, int flags) {
    struct sigaction action {};
    action.sa_handler = onSignal;
    action.sa_flags = flags;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

void setBlocked(int how, int signal) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, signal);
    pthread_sigmask(how, &signals, nullptr);
}

}  // namespace

void installThreadSignalHandler() {
    prepareBugReports();
    // No SA_RESTART for SIGUSR1: ending a blocking system call is what it is for.
    catchSignal(SIGUSR1, 0);
    catchSignal(SIGHUP, SA_RESTART);
}

void Thread::signalQuit() {
    running_.with([this](bool running) {
        if (running) {
            pthread_kill(threadId_, SIGUSR1);
        }
    });
}

void Thread::registerSignal(int signo) {
    setBlocked(SIG_UNBLOCK, signo);
}

void Thread::unRegisterSignal(int signo) {
    setBlocked(SIG_BLOCK, signo);
}

void Thread::listenSignalQuit() {
    registerSignal(SIGUSR1);
}

void Thread::ignoreSignalQuit() {
    unRegisterSignal(SIGUSR1);
}

}  // namespace Valen
