#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "Tests/Common/Threads/SystemCalls.h"
#include "Tests/Common/Threads/ThreadWorld.h"

namespace {

using support::LogLine;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::Thread;

const LogLine kNotAttached{
    18, 6,
    "Thread: Thread::isJoinNeeded(): WARNING: Thread is not attached or was joined previously (OLED)!"};

class ThreadJoinTest : public ThreadWorld {
protected:
    ThreadJoinTest() {
        logErrorsOnly();
        logInDetail(kThreadKey);
    }

    Thread idle{kOled, [] {}, 0};
};

TEST_F(ThreadJoinTest, AThreadThatWasNeverStartedNeedsNoJoin) {
    EXPECT_FALSE(idle.isJoinNeeded());
    EXPECT_EQ(0, idle.join(nullptr));
    EXPECT_EQ(0, idle.joinOrExit(0));
    idle.quitAndJoin();
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(ThreadJoinTest, AStartedThreadNeedsOneJoin) {
    idle.start(false, 0);
    EXPECT_TRUE(idle.isJoinNeeded());
    int some = 0;
    void* result = &some;
    EXPECT_EQ(0, idle.join(&result));
    EXPECT_EQ(nullptr, result);
    EXPECT_THAT(syslog.lines(), IsEmpty());
    EXPECT_FALSE(idle.isJoinNeeded());
    EXPECT_THAT(syslog.lines(), ElementsAre(kNotAttached));
}

TEST_F(ThreadJoinTest, ASecondJoinIsLoggedAndReturnsNothing) {
    idle.start(false, 0);
    idle.join(nullptr);
    int some = 0;
    void* result = &some;
    EXPECT_EQ(0, idle.join(&result));
    EXPECT_EQ(&some, result);
    EXPECT_THAT(syslog.lines(), ElementsAre(kNotAttached));
}

TEST_F(ThreadJoinTest, JoiningADetachedThreadIsLoggedAndReturnsAtOnce) {
    Gate leave;
    Thread thread(
        kOled, [&leave] { leave.wait(); }, 0);
    thread.start(true, 0);
    EXPECT_EQ(0, thread.join(nullptr));
    EXPECT_THAT(syslog.lines(), ElementsAre(kNotAttached));
    EXPECT_FALSE(thread.isJoinNeeded());
    EXPECT_THAT(syslog.lines(), ElementsAre(kNotAttached));
    EXPECT_EQ(0, thread.joinOrExit(0));
    EXPECT_THAT(syslog.lines(), ElementsAre(kNotAttached));
    thread.quitAndJoin();
    EXPECT_THAT(syslog.lines(), IsEmpty());
    EXPECT_TRUE(thread.isRunning());
    leave.open();
    waitUntil([&thread] { return !thread.isRunning(); });
}

TEST_F(ThreadJoinTest, TheJoinWarningIsADebugMessage) {
    logErrorsOnly();
    idle.start(false, 0);
    idle.join(nullptr);
    EXPECT_EQ(0, idle.join(nullptr));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

struct Failure {
    int error;
    const char* text;
};

class ThreadJoinFailureTest : public ThreadJoinTest, public testing::WithParamInterface<Failure> {};

TEST_P(ThreadJoinFailureTest, IsLoggedReturnedAndLeavesNothingToJoin) {
    ChangedSystemCalls changed;
    idle.start(false, 0);
    changed->joinError = GetParam().error;
    int some = 0;
    void* result = &some;
    EXPECT_EQ(GetParam().error, idle.join(&result));
    EXPECT_EQ(nullptr, result);
    EXPECT_THAT(syslog.lines(), ElementsAre(LogLine{18, 6, GetParam().text}));
    EXPECT_FALSE(idle.isJoinNeeded());
}

INSTANTIATE_TEST_SUITE_P(Table, ThreadJoinFailureTest,
                         testing::Values(Failure{EINVAL, "Thread: Thread::Join - is no joinable thread"},
                                         Failure{ESRCH, "Thread: Thread::Join - is no thread id"}));

TEST_F(ThreadJoinTest, AThreadThatJoinsItselfWouldDeadlock) {
    int error = 0;
    Thread thread(
        kOled, [&] { error = thread.join(nullptr); }, 0);
    thread.start(false, 0);
    waitUntil([&thread] { return !thread.isRunning(); });
    EXPECT_EQ(EDEADLK, error);
    EXPECT_THAT(syslog.lines(), ElementsAre(LogLine{18, 6, "Thread: Thread::Join - would deadlock"}));
    EXPECT_FALSE(thread.isJoinNeeded());
}

TEST_F(ThreadJoinTest, JoinOrExitReturnsWhenTheFunctionHasFinished) {
    Gate leave;
    Thread thread(
        kOled, [&leave] { leave.wait(); }, 0);
    thread.start(false, 0);
    Thread opener(
        kOneWire, [&leave] { leave.open(); }, 0);
    opener.start(false, 0);
    EXPECT_EQ(0, thread.joinOrExit(60'000));
    EXPECT_FALSE(thread.isRunning());
    EXPECT_FALSE(thread.isJoinNeeded());
    EXPECT_THAT(syslog.lines(), ElementsAre(kNotAttached));
}

TEST_F(ThreadJoinTest, JoinOrExitWithoutTimeSparesAFinishedThread) {
    idle.start(false, 0);
    waitUntil([this] { return !idle.isRunning(); });
    EXPECT_EQ(0, idle.joinOrExit(0));
    EXPECT_FALSE(std::filesystem::exists(kBugs));
    EXPECT_EQ(0, idle.start(false, 0));
    EXPECT_EQ(0, idle.join(nullptr));
}

TEST_F(ThreadJoinTest, AHundredJoinOrExitsLeaveNoThread) {
    const auto tasks = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
    };
    // A sanitizer's own thread comes with the first one.
    idle.start(false, 0);
    idle.join(nullptr);
    const auto before = tasks();
    for (int start = 0; start < 100; ++start) {
        ASSERT_EQ(0, idle.start(false, 0));
        ASSERT_EQ(0, idle.joinOrExit(60'000));
    }
    waitUntil([&] { return tasks() <= before; });
}

/// Runs in a child process: a thread that does not quit when it is asked to.
void joinOrExitWithAStubbornThread(int timeoutMs) {
    Gate never;
    Thread thread(
        kOled, [&never] { never.wait(); }, 0);
    thread.start(false, 0);
    thread.joinOrExit(timeoutMs);
}

TEST_F(ThreadJoinTest, JoinOrExitEndsTheProcessWithAReportWhenTheThreadDoesNotQuit) {
    for (const int timeout : {-1, 0, 10}) {
        std::filesystem::remove(kBugs);
        EXPECT_EXIT(joinOrExitWithAStubbornThread(timeout), testing::ExitedWithCode(66), "");
        EXPECT_THAT(bugs(), testing::ContainsRegex(
                                "\\(main [0-9]+\\) WAITED TOO LONG FOR THREAD TO QUIT!\tDOING EXIT! "
                                "==> OLED \\(pid [0-9]+\\)\n.+\\[0x"));
    }
}

}  // namespace
