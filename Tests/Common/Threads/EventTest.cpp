#include "Vl/Common/Threads/Event.h"

#include <cstdint>
#include <list>
#include <optional>
#include <type_traits>

#include "Tests/Common/Threads/ThreadWorld.h"

namespace {

using testing::ContainsRegex;
using Valen::Event;
using Valen::Thread;

constexpr std::uint64_t kBit32 = 0x1'0000'0000;
constexpr std::uint64_t kBit40 = 0x100'0000'0000;
constexpr std::uint64_t kBit62 = 0x4000'0000'0000'0000;
constexpr std::uint64_t kBit63 = 0x8000'0000'0000'0000;

timespec monotonicNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now;
}

long long nanoseconds(const timespec& time) {
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

/// A thread that waits on an event without limit.
class Waiter {
public:
    explicit Waiter(Event& event, bool clear = false)
        : thread_(
              kOled, [this, &event, clear] { bits_ = event.WaitTimeout(nullptr, clear); }, 0) {
        thread_.start(false, 0);
        // It holds the event's mutex from then until it sleeps.
        waitUntil([this] { return thread_.isInIO(); });
    }
    /// What it was woken with.
    std::uint64_t result() {
        thread_.join(nullptr);
        return bits_;
    }

private:
    std::uint64_t bits_ = 1;
    Thread thread_;
};

TEST(EventTest, BeginsAsItsArgumentSays) {
    EXPECT_EQ(0U, Event(false).WaitTimeoutBits(0, false));
    EXPECT_EQ(kBit62, Event(true).WaitTimeoutBits(0, false));
}

TEST(EventTest, AWaitThatClearsReturnsAtOnceAndTheNextOneBlocks) {
    Event event(true);
    EXPECT_TRUE(event.Wait(true));
    Waiter second(event, true);
    event.Set();
    EXPECT_EQ(kBit62, second.result());
    EXPECT_FALSE(event.WaitTimeout(0, false));
}

TEST(EventTest, AWaitThatDoesNotClearLeavesTheEventSignalled) {
    Event event(true);
    EXPECT_TRUE(event.Wait(false));
    EXPECT_TRUE(event.WaitTimeout(0, false));
    EXPECT_EQ(kBit62, event.WaitTimeout(nullptr, true));
    EXPECT_EQ(0U, event.WaitTimeoutBits(0, true));
}

TEST(EventTest, AZeroIsATimeAndNotTheMissingDeadline) {
    Event event(false);
    static_assert(std::is_same_v<bool, decltype(event.WaitTimeout(0, true))>);
    static_assert(std::is_same_v<std::uint64_t, decltype(event.WaitTimeout(nullptr, true))>);
    EXPECT_FALSE(event.WaitTimeout(0, true));
}

TEST(EventTest, ATimeInThePastOnlyLooks) {
    Event event(false);
    EXPECT_FALSE(event.WaitTimeout(-1000, false));
    event.Set();
    EXPECT_TRUE(event.WaitTimeout(-1000, false));
}

TEST(EventTest, ATimeIsWaitedOutOnTheMonotonicClock) {
    Event event(false);
    const timespec before = monotonicNow();
    EXPECT_EQ(0U, event.WaitTimeoutBits(30, false));
    EXPECT_GE(nanoseconds(monotonicNow()) - nanoseconds(before), 30'000'000);
}

TEST(EventTest, ADeadlineIsAMomentOfTheMonotonicClock) {
    Event event(false);
    timespec deadline = monotonicNow();
    EXPECT_EQ(0U, event.WaitTimeout(&deadline, false));
    deadline.tv_sec += 3600;
    Thread setter(
        kOled, [&event] { event.SetBits(kBit40); }, 0);
    setter.start(false, 0);
    EXPECT_EQ(kBit40, event.WaitTimeout(&deadline, false));
}

TEST(EventTest, SignalBitsGatherUntilTheyAreCleared) {
    Event event(false);
    event.SetBits(kBit32);
    event.SetBits(kBit40);
    EXPECT_EQ(kBit32 | kBit40, event.WaitTimeoutBits(0, false));
    event.Clear();
    EXPECT_EQ(0U, event.WaitTimeoutBits(0, false));
}

TEST(EventTest, BitsThatSignalNothingAndTheMarkOfDestructionCannotBeSet) {
    Event event(false);
    event.SetBits(0xFFFF'FFFF | kBit63);
    EXPECT_EQ(0U, event.WaitTimeoutBits(0, false));
    event.SetBits(~std::uint64_t{0});
    EXPECT_EQ(0x7FFF'FFFF'0000'0000U, event.WaitTimeoutBits(0, false));
}

TEST(EventTest, AWakeUpWithoutASignalDoesNotEndTheWait) {
    Event event(false);
    Waiter waiter(event);
    event.SetBits(0);
    event.Clear();
    event.SetBits(kBit32);
    EXPECT_EQ(kBit32, waiter.result());
}

TEST(EventTest, OneSignalWakesAllWhoWait) {
    Event event(false);
    Waiter first(event);
    Waiter second(event);
    Waiter third(event);
    event.Set();
    EXPECT_EQ(kBit62, first.result());
    EXPECT_EQ(kBit62, second.result());
    EXPECT_EQ(kBit62, third.result());
}

TEST(EventTest, ASignalIsForOneOfThoseWhoClear) {
    Event event(false);
    Waiter first(event, true);
    Waiter second(event, true);
    event.SetBits(kBit32);
    waitUntil([&event] { return event.WaitTimeoutBits(0, false) == 0; });
    event.SetBits(kBit32);
    EXPECT_EQ(kBit32, first.result());
    EXPECT_EQ(kBit32, second.result());
}

TEST(EventTest, DestructionSendsAllWaitersAwayWithNothing) {
    for (const bool clear : {false, true}) {
        std::optional<Event> event(false);
        std::list<Waiter> waiters;
        for (int count = 0; count < 4; ++count) {
            waiters.emplace_back(*event, clear);
        }
        event.reset();
        for (Waiter& waiter : waiters) {
            EXPECT_EQ(0U, waiter.result());
        }
    }
}

TEST(EventTest, AnUnlimitedWaitSaysFalseWhenTheEventIsDestroyed) {
    std::optional<Event> event(false);
    bool signalled = true;
    Thread thread(
        kOled, [&] { signalled = event->Wait(false); }, 0);
    thread.start(false, 0);
    waitUntil([&] { return thread.isInIO(); });
    event.reset();
    thread.join(nullptr);
    EXPECT_FALSE(signalled);
}

TEST(EventTest, ThreadsPassEachOtherTheTurn) {
    constexpr int kRounds = 2000;
    Event ping(false);
    Event pong(false);
    int turns = 0;
    Thread other(
        kOled,
        [&] {
            for (int round = 0; round < kRounds; ++round) {
                ping.Wait(true);
                ++turns;
                pong.Set();
            }
        },
        0);
    other.start(false, 0);
    for (int round = 0; round < kRounds; ++round) {
        ping.Set();
        pong.Wait(true);
        ++turns;
    }
    other.join(nullptr);
    EXPECT_EQ(2 * kRounds, turns);
}

TEST(EventTest, WhoSleepsOnItIsInIOForThatLong) {
    Event event(false);
    Thread thread(
        kOled, [&event] { event.Wait(false); }, 0);
    thread.start(false, 0);
    waitUntil([&thread] { return thread.isInIO(); });
    event.Set();
    thread.join(nullptr);
    EXPECT_FALSE(thread.isInIO());
}

using EventWorldTest = ThreadWorld;

TEST_F(EventWorldTest, ADeadlineThatIsNoneEndsTheWaitWithABugReport) {
    Event event(false);
    const timespec deadline{.tv_sec = monotonicNow().tv_sec + 3600, .tv_nsec = 2'000'000'000};
    EXPECT_EQ(0U, event.WaitTimeout(&deadline, false));
    EXPECT_THAT(bugs(), ContainsRegex("\\(main [0-9]+\\) timed wait cond error: 22\n.+\\[0x"));
}

}  // namespace
