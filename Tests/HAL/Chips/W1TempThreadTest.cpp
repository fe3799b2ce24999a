#include "Vl/HAL/Chips/W1TempThread.h"

#include <chrono>
#include <string>
#include <thread>

#include "Tests/HAL/Chips/W1SensorWorld.h"
#include "Vl/System/LinuxClock.h"

namespace {

using std::string_literals::operator""s;
using testing::Contains;
using testing::HasSubstr;
using Valen::HAL::W1Temp;
using Valen::HAL::W1TempThread;

constexpr unsigned int kAny = 0x80000000;
constexpr Valen::Event::Bits kPollNow = 1ULL << 61;

class W1TempThreadTest : public W1SensorWorld {
protected:
    W1TempThreadTest() {
        logUpTo(Valen::Log::SeverityLevel::ERROR);
        faults.onSleep = nullptr;  // the poller sleeps, too
    }

    /// Lets the poller take steps until `done` holds.
    template <typename Condition>
    static void pollUntil(Condition done) {
        while (!done()) {
            W1TempThread::instance().quitEvent().SetBits(kPollNow);
            std::this_thread::yield();
        }
    }
    /// Leaves it to the poller when that is.
    static void waitForReading(const W1Temp& sensor) {
        while (sensor.temperature() == kUnknown) {
            std::this_thread::yield();
        }
    }
    static std::size_t threads() {
        const auto entries = std::filesystem::directory_iterator("/proc/self/task");
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }
};

TEST_F(W1TempThreadTest, TheFirstSensorStartsThePollerWhichReadsItAtOnce) {
    logUpTo(Valen::Log::SeverityLevel::SERVICE);
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    EXPECT_FALSE(W1TempThread::instance().isRunning());
    const W1Temp sensor(0, 1, 0);
    waitForReading(sensor);
    EXPECT_EQ(0x50, sensor.temperature());
    EXPECT_TRUE(W1TempThread::instance().isRunning());
    EXPECT_THAT(syslog.texts(), Contains(HasSubstr("Firmware: CPCardInterface (pid: ")));
}

TEST_F(W1TempThreadTest, AnotherSensorEndsItsTenSecondsAtOnce) {
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    const W1Temp first(0, 1, 0);
    waitForReading(first);
    const auto start = std::chrono::steady_clock::now();
    const W1Temp second(0, 1, 0);
    waitForReading(second);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(W1TempThreadTest, QuittingEndsItsTenSecondsAtOnceAndLeavesNoThread) {
    std::thread([] {}).join();  // a sanitizer's own thread comes with the first one
    const std::size_t before = threads();
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    const W1Temp sensor(0, 1, 0);
    waitForReading(sensor);
    const auto start = std::chrono::steady_clock::now();
    W1TempThread::instance().quitAndJoin();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    // The kernel takes a joined thread off its list a moment later.
    while (threads() > before) {
        std::this_thread::yield();
    }
}

TEST_F(W1TempThreadTest, ASensorAfterNoneStartsItAgain) {
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    for (int time = 0; time < 3; ++time) {
        {
            const W1Temp sensor(0, 1, 0);
            waitForReading(sensor);
        }
        W1TempThread::instance().quitAndJoin();
        EXPECT_FALSE(W1TempThread::instance().isRunning());
    }
}

TEST_F(W1TempThreadTest, EachStepIsASignOfLife) {
    addSensor(1, kName, "\0\0"s, "\x50\0\0\0"s);
    const W1Temp sensor(0, 1, 0);
    const timespec before = Valen::system::clock::LinuxClock::getTime();
    pollUntil([&before] {
        const timespec alive = W1TempThread::instance().aliveTime();
        return alive.tv_sec > before.tv_sec ||
               (alive.tv_sec == before.tv_sec && alive.tv_nsec > before.tv_nsec);
    });
}

TEST_F(W1TempThreadTest, SensorsComeAndGoTenThousandTimesWhileItRuns) {
    addSensor(1, kName, "\1\0"s, "\x50\0\0\0"s);
    addSensor(1, "22-000000000001", "\2\0"s, "\x51\0\0\0"s);
    const int before = openDescriptors();
    {
        const W1Temp stays(1, 1, 0);
        for (int time = 0; time < 10'000; ++time) {
            const W1Temp goes(2, 1, 0);
            ASSERT_TRUE(goes.isOpen());
        }
        setTemperature(kName, "\x60\0\0\0"s);
        pollUntil([&stays] { return stays.temperature() == 0x60; });
    }
    W1TempThread::instance().quitAndJoin();
    EXPECT_EQ(before, openDescriptors());
}

TEST_F(W1TempThreadTest, SeveralThreadsMayAddAndRemoveSensors) {
    addSensor(1, kName, "\1\0"s, "\x50\0\0\0"s);
    const auto comeAndGo = [] {
        for (int time = 0; time < 500; ++time) {
            const W1Temp goes(1, 1, 0);
        }
    };
    std::thread first(comeAndGo);
    std::thread second(comeAndGo);
    comeAndGo();
    first.join();
    second.join();
    const W1Temp last(1, 1, 0);
    pollUntil([&last] { return last.temperature() == 0x50; });
}

TEST_F(W1TempThreadTest, SensorsMayBeUnpluggedWhileTheyAreRead) {
    addSensor(1, kName, "\1\0"s, "\x50\0\0\0"s);
    const int before = openDescriptors();
    {
        const W1Temp sensor(kAny, 1, 1);
        for (int time = 0; time < 200; ++time) {
            setTemperature(kName, "");
            removeSlave(1, kName);
            pollUntil([&sensor] { return !sensor.isOpen(); });
            addSensor(1, kName, "\1\0"s, "\x50\0\0\0"s);
            pollUntil([&sensor] { return sensor.temperature() == 0x50; });
        }
    }
    W1TempThread::instance().quitAndJoin();
    EXPECT_EQ(before, openDescriptors());
}

TEST_F(W1TempThreadTest, AnUnpluggedSensorIsFoundAgain) {
    addSensor(1, kName, "\1\0"s, "\x50\0\0\0"s);
    const W1Temp sensor(kAny, 1, 1);
    pollUntil([&sensor] { return sensor.temperature() == 0x50; });
    setTemperature(kName, "");
    removeSlave(1, kName);
    pollUntil([&sensor] { return sensor.temperature() == kUnknown && !sensor.isOpen(); });
    addSensor(1, kName, "\1\0"s, "\x52\0\0\0"s);
    pollUntil([&sensor] { return sensor.temperature() == 0x52; });
}

}  // namespace
