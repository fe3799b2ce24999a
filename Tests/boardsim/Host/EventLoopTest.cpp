#include "Tools/boardsim/Host/EventLoop.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>

#include "Tools/boardsim/Host/Descriptor.h"

namespace {

using boardsim::Descriptor;
using boardsim::EventLoop;
using Clock = EventLoop::Clock;

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(0, pipe2(ends.data(), O_CLOEXEC));
        reading = Descriptor(ends[0]);
        writing = Descriptor(ends[1]);
    }
    void put() const { EXPECT_EQ(1, write(writing.get(), "x", 1)); }
    void take() const {
        char byte = 0;
        EXPECT_EQ(1, read(reading.get(), &byte, 1));
    }

    Descriptor reading;
    Descriptor writing;
};

TEST(EventLoopTest, ServesReadableDescriptorsInTheOrderOfTheirRegistration) {
    Pipe first;
    Pipe second;
    EventLoop loop;
    std::string order;
    loop.watch(first.reading.get(), [&] {
        order += "1";
        first.take();
    });
    loop.watch(second.reading.get(), [&] {
        order += "2";
        second.take();
        loop.stop();
    });
    second.put();
    first.put();
    loop.run();
    EXPECT_EQ("12", order);
}

TEST(EventLoopTest, ADescriptorAtItsEndIsServed) {
    Pipe pipe;
    EventLoop loop;
    bool served = false;
    loop.watch(pipe.reading.get(), [&] {
        served = true;
        loop.stop();
    });
    pipe.writing.reset();
    loop.run();
    EXPECT_TRUE(served);
}

TEST(EventLoopTest, ATimerFiresNotBeforeItIsDue) {
    EventLoop loop;
    const Clock::time_point when = Clock::now() + std::chrono::milliseconds(30);
    Clock::time_point fired{};
    loop.addTimer([&] { return fired == Clock::time_point{} ? std::optional(when) : std::nullopt; },
                  [&] {
                      fired = Clock::now();
                      loop.stop();
                  });
    loop.run();
    EXPECT_GE(fired, when);
}

TEST(EventLoopTest, AHandlerMayRemoveItsOwnWatchAndLaterOnes) {
    Pipe first;
    Pipe second;
    EventLoop loop;
    std::string order;
    loop.watch(first.reading.get(), [&] {
        order += "1";
        loop.unwatch(first.reading.get());
        loop.unwatch(second.reading.get());
    });
    loop.watch(second.reading.get(), [&] { order += "2"; });
    bool stopped = false;
    loop.addTimer([&] { return order.empty() ? std::nullopt : std::optional(Clock::now()); },
                  [&] {
                      stopped = true;
                      loop.stop();
                  });
    first.put();
    second.put();
    loop.run();
    EXPECT_EQ("1", order);
    EXPECT_TRUE(stopped);
}

TEST(EventLoopTest, AHandlerMayAddWatches) {
    Pipe first;
    Pipe second;
    EventLoop loop;
    loop.watch(first.reading.get(), [&] {
        first.take();
        loop.watch(second.reading.get(), [&] { loop.stop(); });
        second.put();
    });
    first.put();
    loop.run();
    SUCCEED() << "run() returned, so the second watch was served";
}

}  // namespace
