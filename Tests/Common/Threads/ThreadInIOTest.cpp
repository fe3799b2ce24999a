#include "Vl/Common/Threads/ThreadInIO.h"

#include "Tests/Common/Threads/ThreadWorld.h"

namespace {

using Valen::Thread;
using Valen::ThreadInIO;
using Valen::ThreadRecord;

TEST(ThreadInIOTest, StretchesMayBeNested) {
    bool outside = true;
    bool inInner = false;
    bool inOuter = false;
    bool behind = true;
    Thread thread(
        kOled,
        [&] {
            outside = thread.isInIO();
            {
                const ThreadInIO outer;
                {
                    const ThreadInIO inner;
                    inInner = thread.isInIO();
                }
                inOuter = thread.isInIO();
            }
            behind = thread.isInIO();
        },
        0);
    thread.start(false, 0);
    thread.join(nullptr);
    EXPECT_FALSE(outside);
    EXPECT_TRUE(inInner);
    EXPECT_TRUE(inOuter);
    EXPECT_FALSE(behind);
}

TEST(ThreadInIOTest, ConcernsTheCallingThreadAlone) {
    Gate done;
    Thread other(
        kOneWire, [&done] { done.wait(); }, 0);
    other.start(false, 0);
    bool otherInIO = true;
    Thread thread(
        kOled,
        [&] {
            const ThreadInIO stretch;
            otherInIO = other.isInIO();
        },
        0);
    thread.start(false, 0);
    thread.join(nullptr);
    done.open();
    EXPECT_FALSE(otherInIO);
}

TEST(ThreadInIOTest, IsWithoutEffectInAThreadThatOthersStarted) {
    ASSERT_EQ(nullptr, ThreadRecord::current());
    const ThreadInIO inMain;
    std::thread([] {
        const ThreadInIO stretch;
        EXPECT_EQ(nullptr, ThreadRecord::current());
    }).join();
}

TEST(ThreadInIOTest, AThreadIsOutOfIOWhenItStartsAnew) {
    Thread thread(
        kOled, [] {}, 0);
    thread.enterIO();
    thread.start(false, 0);
    thread.join(nullptr);
    EXPECT_FALSE(thread.isInIO());
}

}  // namespace
