// The time code, read and written while it runs much faster than any hardware's.
#include <fcntl.h>
#include <sys/mman.h>

#include <atomic>
#include <random>
#include <string>
#include <thread>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"

namespace {

using Vitc = Valen::CPInterface::Vitc;

constexpr std::size_t kLength = 0x1000;
constexpr std::size_t kSync = 0x400;
constexpr std::uint32_t kFrames25 = 0x04000000;
constexpr std::uint64_t kSecondsOfDay = 86400;

/// How often the time must have changed under the test's eyes, where the threads take turns on one processor.
constexpr std::uint64_t kEnough = 50;

/// A moment of the test's time: frames since the midnight before the first day.
using Moment = std::uint64_t;

/// Two digits and a byte of user bits, as a half of a word holds them.
constexpr std::uint64_t half(std::uint64_t number, std::uint64_t bits) {
    return number % 10 | (bits & 0xF) << 4 | number / 10 << 8 | bits >> 4 << 12;
}
constexpr std::uint64_t numberOf(std::uint64_t half) {
    return (half & 0xF) + (half >> 8 & 0x7) * 10;
}
constexpr std::uint64_t bitsOf(std::uint64_t half) {
    return (half >> 4 & 0xF) | (half >> 12 & 0xF) << 4;
}

/// How the test's time is told. The user bits say twice what the words are to agree on: those of the low word
/// are the minute of the day, which the high word's digits are; those of the high word are the day, so that
/// no high word comes again.
struct Calendar {
    std::uint64_t framesPerSecond;

    std::uint64_t framesOfDay() const { return kSecondsOfDay * framesPerSecond; }

    std::uint64_t codeOf(Moment moment) const {
        const std::uint64_t second = moment / framesPerSecond % kSecondsOfDay;
        const std::uint64_t minute = second / 60;
        const std::uint64_t day = moment / framesOfDay();
        return half(moment % framesPerSecond, minute & 0xFF) | half(second % 60, minute >> 8) << 16 |
               half(minute % 60, day & 0xFF) << 32 | half(minute / 60, day >> 8 & 0xFF) << 48;
    }
    Moment momentOf(std::uint64_t code) const {
        const std::uint64_t minute = numberOf(code >> 48) * 60 + numberOf(code >> 32 & 0xFFFF);
        const std::uint64_t second = minute * 60 + numberOf(code >> 16 & 0xFFFF);
        const std::uint64_t day = bitsOf(code >> 32 & 0xFFFF) | bitsOf(code >> 48) << 8;
        return day * framesOfDay() + second * framesPerSecond + numberOf(code & 0xFFFF);
    }

    Vitc vitcOf(Moment moment) const {
        const std::uint64_t second = moment / framesPerSecond % kSecondsOfDay;
        const std::uint64_t minute = second / 60;
        const std::uint64_t day = moment / framesOfDay();
        // The first millisecond of the frame; rounded up, for it is rounded down to a frame again.
        const std::uint64_t ms = (moment % framesPerSecond * 1000 + framesPerSecond - 1) / framesPerSecond;
        return {.seconds = static_cast<std::uint32_t>(second),
                .milliseconds = static_cast<std::uint32_t>(ms),
                .userBits = {static_cast<std::uint8_t>(minute), static_cast<std::uint8_t>(minute >> 8),
                             static_cast<std::uint8_t>(day), static_cast<std::uint8_t>(day >> 8)}};
    }
    Moment momentOf(const Vitc& time) const {
        return dayOf(time) * framesOfDay() + time.seconds * framesPerSecond + time.frames;
    }
    static std::uint64_t dayOf(const Vitc& time) { return time.userBits[2] | time.userBits[3] << 8; }
    /// Whether the low word is of the same minute as the high one.
    static bool isOfOneMoment(const Vitc& time) {
        return time.seconds / 60 == static_cast<std::uint32_t>(time.userBits[0] | time.userBits[1] << 8);
    }
};

/// The registers of a central sync block, of which a thread lets the time code run. It has a mapping of its
/// own of the device that the code under test maps, as hardware has its own way to its registers.
///
/// It runs in strides of more than a minute, so that each of them changes both words, with pauses of any
/// length up to a microsecond or so, in which a word can be read or written, or both, or neither.
class RunningBlock {
public:
    RunningBlock(Calendar calendar, Moment from) : calendar_(calendar) {
        support::PrivateWorld::write("/dev/fpga", std::string(kLength, '\0'));
        const Valen::Descriptor file = Valen::Descriptor::open("/dev/fpga", O_RDWR);
        base_ = static_cast<char*>(mmap(nullptr, kLength, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0));
        *reinterpret_cast<std::uint32_t*>(base_ + kSync + 12) =
            calendar.framesPerSecond == 25 ? kFrames25 : 0;
        code().store(calendar.codeOf(from));
        thread_ = std::thread([this] { run(); });
    }
    RunningBlock(const RunningBlock&) = delete;
    RunningBlock& operator=(const RunningBlock&) = delete;
    ~RunningBlock() {
        stopped_ = true;
        thread_.join();
        munmap(base_, kLength);
    }

    std::uint64_t ticks() const { return ticks_; }
    Moment stride() const { return 61 * calendar_.framesPerSecond + 1; }

private:
    void run() {
        std::minstd_rand random(1);
        while (!stopped_) {
            std::uint64_t now = code();
            const std::uint64_t next = calendar_.codeOf(calendar_.momentOf(now) + stride());
            // Where somebody wrote meanwhile, the next frame counts on from that.
            if (code().compare_exchange_strong(now, next)) {
                ++ticks_;
            }
            for (auto pause = random() % 256; pause > 0 && !stopped_; --pause) {
            }
        }
    }
    std::atomic_ref<std::uint64_t> code() {
        return std::atomic_ref(*reinterpret_cast<std::uint64_t*>(base_ + kSync + 56));
    }

    const Calendar calendar_;
    char* base_;
    std::atomic<bool> stopped_ = false;
    std::atomic<std::uint64_t> ticks_ = 0;
    std::thread thread_;
};

class TickingVitcTest : public BoardWorld, public testing::WithParamInterface<std::uint64_t> {
protected:
    TickingVitcTest() {
        support::PrivateWorld::write("/dev/gpio", "");
        writeLayout("fpga", core("central_sync", {1, kSync}));
        logUpTo(Valen::Log::SeverityLevel::SERVICE);
    }

    const Calendar calendar{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(FramesPerSecond, TickingVitcTest, testing::Values(25, 30),
                         [](const auto& rate) { return std::to_string(rate.param); });

TEST_P(TickingVitcTest, AMillionReadsNeverMixTwoTimesNorAtMidnight) {
    const RunningBlock block(calendar, calendar.framesOfDay() - 1000);
    TestBoard board;
    std::uint64_t midnights = 0;
    std::uint64_t changes = 0;
    Vitc last;
    for (int i = 0; i < 1'000'000 || changes < kEnough || midnights == 0; ++i) {
        Vitc time;
        ASSERT_TRUE(board.getVitcData(time));
        ASSERT_TRUE(Calendar::isOfOneMoment(time)) << time.seconds << " of day " << Calendar::dayOf(time);
        ASSERT_LT(time.frames, calendar.framesPerSecond);
        ASSERT_LT(time.seconds, kSecondsOfDay);
        midnights += Calendar::dayOf(time) != Calendar::dayOf(last) ? 1 : 0;
        changes += time != last ? 1 : 0;
        last = time;
    }
}

TEST_P(TickingVitcTest, WhatIsWrittenIsWhatItRunsOnFrom) {
    const RunningBlock block(calendar, calendar.framesOfDay() - 1000);
    TestBoard board;
    std::mt19937_64 random(1);
    std::uint64_t changes = 0;
    for (int i = 0; i < 100'000 || changes < kEnough; ++i) {
        const Moment moment = random() % (100 * calendar.framesOfDay());
        const std::uint64_t ticksBefore = block.ticks();
        ASSERT_EQ(1, board.setVitcData(calendar.vitcOf(moment)));
        Vitc time;
        ASSERT_TRUE(board.getVitcData(time));
        const std::uint64_t ticksAfter = block.ticks();
        const Moment passed = calendar.momentOf(time) - moment;
        changes += passed != 0 ? 1 : 0;
        ASSERT_EQ(0U, passed % block.stride());
        // A tick takes effect just before it is counted.
        ASSERT_LE(passed / block.stride(), ticksAfter - ticksBefore + 1);
    }
}

}  // namespace
