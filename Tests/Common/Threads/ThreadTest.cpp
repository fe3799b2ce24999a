#include "Vl/Common/Threads/Thread.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <memory>
#include <vector>

#include "Tests/Common/Threads/SystemCalls.h"
#include "Tests/Common/Threads/ThreadWorld.h"
#include "Vl/Common/Log/BugReport.h"

namespace {

using support::LogLine;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;
using Valen::Thread;

constexpr int kHourInMs = 3'600'000;

std::ptrdiff_t entriesOf(const char* directory) {
    return std::distance(std::filesystem::directory_iterator(directory), {});
}

std::string kernelName() {
    std::array<char, 16> name{};
    pthread_getname_np(pthread_self(), name.data(), name.size());
    return name.data();
}

std::size_t ownStackSize() {
    pthread_attr_t attributes;
    pthread_getattr_np(pthread_self(), &attributes);
    std::size_t size = 0;
    pthread_attr_getstacksize(&attributes, &size);
    pthread_attr_destroy(&attributes);
    return size;
}

std::size_t usualStackSize() {
    pthread_attr_t attributes;
    pthread_getattr_default_np(&attributes);
    std::size_t size = 0;
    pthread_attr_getstacksize(&attributes, &size);
    pthread_attr_destroy(&attributes);
    return size;
}

bool isDetached() {
    pthread_attr_t attributes;
    pthread_getattr_np(pthread_self(), &attributes);
    int state = 0;
    pthread_attr_getdetachstate(&attributes, &state);
    pthread_attr_destroy(&attributes);
    return state == PTHREAD_CREATE_DETACHED;
}

class ThreadTest : public ThreadWorld {
protected:
    /// Runs `function` in a thread of its own to its end.
    static void run(std::function<void()> function, int stackSize = 0) {
        Thread thread(kOled, std::move(function), 0);
        ASSERT_EQ(0, thread.start(false, stackSize));
        EXPECT_EQ(0, thread.join(nullptr));
    }
};

TEST_F(ThreadTest, RunsItsFunctionOnceInAnotherThread) {
    int runs = 0;
    pid_t kernelId = 0;
    Thread thread(
        kOled,
        [&] {
            ++runs;
            kernelId = gettid();
        },
        0);
    EXPECT_EQ(0, thread.start(false, 0));
    EXPECT_EQ(0, thread.join(nullptr));
    EXPECT_EQ(1, runs);
    EXPECT_NE(getpid(), kernelId);
    EXPECT_EQ(kernelId, thread.tid());
}

TEST_F(ThreadTest, ANegativePeriodRunsTheFunctionOnceToo) {
    int runs = 0;
    Thread thread(
        kOled, [&runs] { ++runs; }, -1);
    thread.start(false, 0);
    thread.join(nullptr);
    EXPECT_EQ(1, runs);
}

TEST_F(ThreadTest, APeriodicOneRunsAgainUntilItQuits) {
    std::atomic<int> runs = 0;
    Thread thread(
        kOled, [&runs] { ++runs; }, 1);
    thread.start(false, 0);
    waitUntil([&runs] { return runs >= 5; });
    thread.quitAndJoin();
    const int last = runs;
    EXPECT_FALSE(thread.isRunning());
    EXPECT_EQ(last, runs);
}

TEST_F(ThreadTest, QuitEndsTheSleepOfAPeriodicOneAtOnce) {
    int runs = 0;
    Thread thread(
        kOled, [&runs] { ++runs; }, kHourInMs);
    thread.start(false, 0);
    waitUntil([&thread] { return thread.isInIO(); });
    thread.quitAndJoin();
    EXPECT_EQ(1, runs);
}

TEST_F(ThreadTest, QuitDuringACallLetsTheCallEndAndMakesNoOther) {
    int runs = 0;
    Gate inside;
    Gate leave;
    Thread thread(
        kOled,
        [&] {
            ++runs;
            inside.open();
            leave.wait();
        },
        kHourInMs);
    thread.start(false, 0);
    inside.wait();
    thread.quit();
    EXPECT_TRUE(thread.isRunning());
    leave.open();
    thread.join(nullptr);
    EXPECT_EQ(1, runs);
}

TEST_F(ThreadTest, TheFunctionMaySleepOnTheQuitEvent) {
    Thread thread(
        kOled, [&thread] { thread.quitEvent().Wait(false); }, 0);
    thread.start(false, 0);
    waitUntil([&thread] { return thread.isInIO(); });
    EXPECT_TRUE(thread.isRunning());
    thread.quitAndJoin();
    EXPECT_FALSE(thread.isRunning());
}

TEST_F(ThreadTest, AQuitFromBeforeTheStartIsForgotten) {
    std::atomic<int> runs = 0;
    Thread thread(
        kOled, [&runs] { ++runs; }, 1);
    thread.quit();
    thread.start(false, 0);
    waitUntil([&runs] { return runs >= 2; });
    thread.quitAndJoin();
}

TEST_F(ThreadTest, DestructionRequestsTheEndAndJoins) {
    bool ended = false;
    {
        Thread thread(
            kOled,
            [&] {
                thread.quitEvent().Wait(false);
                ended = true;
            },
            0);
        thread.start(false, 0);
    }
    EXPECT_TRUE(ended);
}

TEST_F(ThreadTest, OneThatWasNeverStartedIsDestroyedWithItsFunction) {
    const auto owned = std::make_shared<int>(0);
    {
        Thread thread(
            kOled, [owned] {}, 0);
        EXPECT_EQ(2, owned.use_count());
        EXPECT_FALSE(thread.isRunning());
        EXPECT_EQ(0, thread.tid());
    }
    EXPECT_EQ(1, owned.use_count());
}

TEST_F(ThreadTest, TheKernelKnowsItByItsComponent) {
    std::string name;
    run([&name] { name = kernelName(); });
    EXPECT_EQ("OLED", name);
}

TEST_F(ThreadTest, TheKernelNameIsCutAtFifteenCharacters) {
    Gate leave;
    const auto deprecatedSwitchAccess = static_cast<Enums::OriginKey::Type>(9);
    Thread thread(
        deprecatedSwitchAccess, [&leave] { leave.wait(); }, 0);
    thread.start(false, 0);
    EXPECT_EQ("DeprecatedSwitc\n",
              support::PrivateWorld::read("/proc/self/task/" + std::to_string(thread.tid()) + "/comm"));
    EXPECT_STREQ("DeprecatedSwitchAccess", thread.name());
    leave.open();
}

TEST_F(ThreadTest, StartAndEndAreLogged) {
    run([] {});
    const std::vector<LogLine> lines = syslog.lines();
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_THAT(lines[0].text, MatchesRegex("Firmware: OLED \\(pid: [0-9]+\\)"));
    EXPECT_THAT(
        lines[1].text,
        MatchesRegex("Firmware: OLED: maxrss: [0-9]+, pageflt: [0-9]+, ru_stime: [0-9]+ s [0-9]+ us"));
    for (const LogLine& line : lines) {
        EXPECT_EQ(16, line.facility);
        EXPECT_EQ(6, line.level);
    }
}

TEST_F(ThreadTest, TheStartLineHoldsTheKernelId) {
    pid_t kernelId = 0;
    run([&kernelId] { kernelId = gettid(); });
    EXPECT_EQ("Firmware: OLED (pid: " + std::to_string(kernelId) + ")", syslog.texts().at(0));
}

TEST_F(ThreadTest, TheFunctionFindsItsObject) {
    void* found = nullptr;
    Thread thread(
        kOled, [&found] { found = pthread_getspecific(Thread::ThreadObject); }, 0);
    thread.start(false, 0);
    thread.join(nullptr);
    EXPECT_EQ(&thread, found);
    EXPECT_EQ(nullptr, pthread_getspecific(Thread::ThreadObject));
    EXPECT_TRUE(pthread_equal(pthread_self(), Thread::mainThread));
}

TEST_F(ThreadTest, RunningOnesAreKnownInTheOrderOfTheirStarts) {
    Gate leave;
    Gate firstInside;
    Gate secondInside;
    Thread second(
        kOled,
        [&] {
            secondInside.open();
            leave.wait();
        },
        0);
    Thread first(
        kOneWire,
        [&] {
            firstInside.open();
            leave.wait();
        },
        0);
    EXPECT_THAT(Thread::known_threads, IsEmpty());
    first.start(false, 0);
    firstInside.wait();
    second.start(false, 0);
    secondInside.wait();
    {
        const std::lock_guard lock(Thread::mut);
        EXPECT_THAT(Thread::known_threads, ElementsAre(&first, &second));
    }
    leave.open();
    first.join(nullptr);
    second.join(nullptr);
    EXPECT_THAT(Thread::known_threads, IsEmpty());
}

TEST_F(ThreadTest, IsAliveWhenItStartsAndWheneverItReports) {
    ChangedSystemCalls changed;
    changed->monotonicSeconds = 1000;
    timespec atStart{};
    timespec reported{};
    Thread thread(
        kOled,
        [&] {
            atStart = thread.aliveTime();
            changed->monotonicSeconds = 1234;
            Thread::reportAlive();
            reported = thread.aliveTime();
        },
        0);
    thread.start(false, 0);
    thread.join(nullptr);
    EXPECT_EQ(1000, atStart.tv_sec);
    EXPECT_EQ(1234, reported.tv_sec);
}

TEST_F(ThreadTest, ASignOfLifeFromAThreadThatOthersStartedIsNobodys) {
    Gate leave;
    Gate inside;
    Thread thread(
        kOled,
        [&] {
            thread.setAliveTime({.tv_sec = 1, .tv_nsec = 2});
            inside.open();
            leave.wait();
        },
        0);
    thread.start(false, 0);
    inside.wait();
    Thread::reportAlive();
    EXPECT_EQ(1, thread.aliveTime().tv_sec);
    leave.open();
}

TEST_F(ThreadTest, ASecondStartIsRefusedWhileTheFirstRunsOrIsNotJoined) {
    Gate leave;
    std::atomic<int> runs = 0;
    Thread thread(
        kOled,
        [&] {
            ++runs;
            leave.wait();
        },
        0);
    ASSERT_EQ(0, thread.start(false, 0));
    EXPECT_EQ(EBUSY, thread.start(false, 0));
    leave.open();
    waitUntil([&thread] { return !thread.isRunning(); });
    EXPECT_EQ(EBUSY, thread.start(true, 0));
    thread.join(nullptr);
    EXPECT_EQ(1, runs);
    EXPECT_EQ(0, thread.start(false, 0));
    thread.join(nullptr);
    EXPECT_EQ(2, runs);
}

TEST_F(ThreadTest, ADetachedOneRunsDetachedAndMayBeStartedAgainAfterItsEnd) {
    bool detached = false;
    Thread thread(
        kOled, [&detached] { detached = isDetached(); }, 0);
    for (int start = 0; start < 2; ++start) {
        detached = false;
        EXPECT_EQ(0, thread.start(true, 0));
        waitUntil([&thread] { return !thread.isRunning(); });
        EXPECT_TRUE(detached);
    }
    EXPECT_EQ(0, thread.start(false, 0));
    EXPECT_TRUE(thread.isJoinNeeded());
    thread.join(nullptr);
    EXPECT_FALSE(detached);
}

TEST_F(ThreadTest, TheStackIsAsLargeAsAskedFor) {
    // More than usual: the system hands out a used stack again where it suffices.
    const std::size_t wanted = usualStackSize() + std::size_t{4} * 1024 * 1024;
    std::size_t size = 0;
    run([&size] { size = ownStackSize(); }, static_cast<int>(wanted));
    EXPECT_GE(size, wanted);
}

TEST_F(ThreadTest, AStackTooSmallForTheThreadsOwnMessagesBecomesLargeEnough) {
    for (const int wanted : {1, 16384, 20480}) {
        std::size_t size = 0;
        run(
            [&size] {
                size = ownStackSize();
                Valen::report_bug(true, "%s", "a report needs its room too");
            },
            wanted);
        EXPECT_GE(size, std::size_t{65536} - std::size_t{4096});
    }
    EXPECT_THAT(bugs(), testing::HasSubstr("a report needs its room too"));
}

TEST_F(ThreadTest, ANegativeStackSizeIsRefused) {
    Thread thread(
        kOled, [] {}, 0);
    EXPECT_EQ(EINVAL, thread.start(false, -1));
    EXPECT_FALSE(thread.isJoinNeeded());
}

TEST_F(ThreadTest, AThreadThatTheSystemRefusesLeavesNothingToJoin) {
    ChangedSystemCalls changed;
    int runs = 0;
    Thread thread(
        kOled, [&runs] { ++runs; }, 0);
    for (const bool detached : {false, true}) {
        changed->createError = EAGAIN;
        EXPECT_EQ(EAGAIN, thread.start(detached, 0));
        EXPECT_FALSE(thread.isRunning());
        EXPECT_FALSE(thread.isJoinNeeded());
    }
    changed->createError = 0;
    EXPECT_EQ(0, thread.start(false, 0));
    thread.join(nullptr);
    EXPECT_EQ(1, runs);
}

TEST_F(ThreadTest, PriorityIsThatOfTheOneThread) {
    const int own = getpriority(PRIO_PROCESS, 0);
    Gate leave;
    Thread thread(
        kOled, [&leave] { leave.wait(); }, 0);
    thread.start(false, 0);
    EXPECT_EQ(0, thread.setPriority(19));
    EXPECT_EQ(19, getpriority(PRIO_PROCESS, static_cast<id_t>(thread.tid())));
    EXPECT_EQ(own, getpriority(PRIO_PROCESS, 0));
    leave.open();
}

TEST_F(ThreadTest, PriorityOfTheCallingThreadIsItsOwn) {
    const int own = getpriority(PRIO_PROCESS, 0);
    int inside = 0;
    run([&inside] {
        EXPECT_EQ(0, Thread::setRunningThreadPriority(18));
        inside = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
    });
    EXPECT_EQ(18, inside);
    EXPECT_EQ(own, getpriority(PRIO_PROCESS, 0));
}

TEST_F(ThreadTest, PriorityOfNoThreadIsRefused) {
    const int own = getpriority(PRIO_PROCESS, 0);
    Thread thread(
        kOled, [] {}, 0);
    errno = 0;
    EXPECT_EQ(-1, thread.setPriority(19));
    EXPECT_EQ(ESRCH, errno);
    EXPECT_EQ(own, getpriority(PRIO_PROCESS, 0));
}

TEST_F(ThreadTest, AHundredStartsLeaveNoDescriptorAndNoThread) {
    logErrorsOnly();
    run([] {});
    const std::ptrdiff_t descriptors = entriesOf("/proc/self/fd");
    const std::ptrdiff_t tasks = entriesOf("/proc/self/task");
    int runs = 0;
    Thread thread(
        kOled, [&runs] { ++runs; }, 0);
    for (int start = 0; start < 100; ++start) {
        ASSERT_EQ(0, thread.start(false, 0));
        ASSERT_EQ(0, thread.join(nullptr));
    }
    EXPECT_EQ(100, runs);
    EXPECT_EQ(descriptors, entriesOf("/proc/self/fd"));
    // The kernel takes a joined thread off its list a moment later.
    waitUntil([tasks] { return entriesOf("/proc/self/task") <= tasks; });
}

}  // namespace
