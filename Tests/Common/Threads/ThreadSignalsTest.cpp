#include <pthread.h>
#include <semaphore.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "Tests/Common/Threads/ThreadWorld.h"
#include "Vl/Common/Files/Descriptor.h"

namespace {

using support::LogLine;
using testing::ContainsRegex;
using testing::ElementsAre;
using Valen::Thread;

bool isBlocked(int signal) {
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    return sigismember(&blocked, signal) == 1;
}

class ThreadSignalsTest : public ThreadWorld {
protected:
    ThreadSignalsTest() { logErrorsOnly(); }

    static void run(std::function<void()> function, int stackSize = 0) {
        Thread thread(kOled, std::move(function), 0);
        ASSERT_EQ(0, thread.start(false, stackSize));
        EXPECT_EQ(0, thread.join(nullptr));
    }
};

TEST_F(ThreadSignalsTest, SignalQuitEndsABlockingCall) {
    std::array<int, 2> ends{};
    ASSERT_EQ(0, pipe(ends.data()));
    const Valen::Descriptor reader(ends[0]);
    const Valen::Descriptor writer(ends[1]);
    ssize_t result = 0;
    int error = 0;
    Thread thread(
        kOled,
        [&] {
            char byte = 0;
            result = read(reader.get(), &byte, 1);
            error = errno;
        },
        0);
    thread.start(false, 0);
    // The first signals may come before the call.
    waitUntil([&thread] {
        thread.signalQuit();
        return !thread.isRunning();
    });
    thread.join(nullptr);
    EXPECT_EQ(-1, result);
    EXPECT_EQ(EINTR, error);
}

TEST_F(ThreadSignalsTest, AnIgnoredSignalQuitWaitsUntilItIsListenedTo) {
    Gate ignoring;
    Gate sent;
    bool pending = false;
    bool blocked = false;
    bool blockedAgain = true;
    Thread thread(
        kOled,
        [&] {
            Thread::ignoreSignalQuit();
            blocked = isBlocked(SIGUSR1);
            ignoring.open();
            sent.wait();
            sigset_t signals;
            sigpending(&signals);
            pending = sigismember(&signals, SIGUSR1) == 1;
            Thread::listenSignalQuit();
            blockedAgain = isBlocked(SIGUSR1);
        },
        0);
    thread.start(false, 0);
    ignoring.wait();
    thread.signalQuit();
    sent.open();
    thread.join(nullptr);
    EXPECT_TRUE(blocked);
    EXPECT_TRUE(pending);
    EXPECT_FALSE(blockedAgain);
}

TEST_F(ThreadSignalsTest, SignalQuitWithoutAThreadDoesNothing) {
    Thread thread(
        kOled, [] {}, 0);
    thread.signalQuit();
    thread.start(false, 0);
    waitUntil([&thread] { return !thread.isRunning(); });
    thread.signalQuit();
    thread.join(nullptr);
    thread.signalQuit();
    thread.start(true, 0);
    waitUntil([&thread] { return !thread.isRunning(); });
    thread.signalQuit();
}

TEST_F(ThreadSignalsTest, AThreadIsReadyForSignalsWhenStartReturns) {
    for (int start = 0; start < 200; ++start) {
        Thread thread(
            kOled, [] {}, 0);
        thread.start(false, 0);
        thread.signalQuit();
    }
}

TEST_F(ThreadSignalsTest, RegisteringASignalUnblocksItForTheCallingThread) {
    ASSERT_FALSE(isBlocked(SIGUSR2));
    std::array<bool, 2> blocked{};
    run([&blocked] {
        Thread::unRegisterSignal(SIGUSR2);
        blocked[0] = isBlocked(SIGUSR2);
        Thread::registerSignal(SIGUSR2);
        blocked[1] = isBlocked(SIGUSR2);
    });
    EXPECT_THAT(blocked, ElementsAre(true, false));
    EXPECT_FALSE(isBlocked(SIGUSR2));
}

TEST_F(ThreadSignalsTest, HangUpWritesTheThreadsBacktrace) {
    int error = 0;
    run([&error] {
        errno = EXDEV;
        pthread_kill(pthread_self(), SIGHUP);
        error = errno;
    });
    EXPECT_EQ(EXDEV, error);
    EXPECT_THAT(bugs(), ContainsRegex("\\(OLED [0-9]+\\) Deadlock\\?\n.+\\[0x.+\n.+\\[0x"));
    EXPECT_THAT(syslog.lines(), ElementsAre(LogLine{1, 3, "Deadlock? (see bugs.txt)"}));
}

TEST_F(ThreadSignalsTest, HangUpDoesNotEndABlockingCall) {
    sem_t semaphore;
    ASSERT_EQ(0, sem_init(&semaphore, 0, 0));
    Gate inside;
    pthread_t id{};
    int result = -1;
    Thread thread(
        kOled,
        [&] {
            id = pthread_self();
            inside.open();
            result = sem_wait(&semaphore);
        },
        0);
    thread.start(false, 0);
    inside.wait();
    // The first signals may come before the call, where a sanitizer keeps them back until it ends.
    waitUntil([this, id] {
        pthread_kill(id, SIGHUP);
        return !syslog.lines().empty();
    });
    sem_post(&semaphore);
    thread.join(nullptr);
    EXPECT_EQ(0, result);
    sem_destroy(&semaphore);
}

TEST_F(ThreadSignalsTest, TheSmallestStackInUseSuffices) {
    Valen::Log::vlLog->setGlobalComponentSeverity(static_cast<Severity>(7));
    run([] { pthread_kill(pthread_self(), SIGHUP); }, 20480);
    EXPECT_THAT(bugs(), ContainsRegex("Deadlock\\?\n.+\\[0x"));
}

}  // namespace
