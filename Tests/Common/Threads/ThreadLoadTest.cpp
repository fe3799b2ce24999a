#include <unistd.h>

#include <ctime>
#include <sstream>
#include <string>
#include <vector>

#include "Tests/Common/Threads/ThreadWorld.h"

namespace {

using testing::ElementsAre;
using testing::MatchesRegex;
using testing::SizeIs;
using Valen::Thread;

struct Row {
    int tid = 0;
    double total = 0;
    double sinceLast = 0;
    long long milliseconds = 0;
    std::string name;
};

std::vector<std::string> linesOf(std::istream& text) {
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Uses the processor for so many milliseconds.
void work(int milliseconds) {
    timespec now{};
    do {
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    } while (now.tv_sec * 1000 + now.tv_nsec / 1'000'000 < milliseconds);
}

class ThreadLoadTest : public ThreadWorld {
protected:
    ThreadLoadTest() { logErrorsOnly(); }

    std::vector<std::string> summary() {
        std::stringstream out;
        Thread::getCPULoadSummary(out, buffers);
        return linesOf(out);
    }
    std::vector<Row> rows() {
        std::vector<Row> read;
        const std::vector<std::string> lines = summary();
        for (std::size_t line = 2; line < lines.size(); ++line) {
            Row row;
            std::string percent;
            std::string unit;
            std::istringstream(lines[line]) >> row.tid >> row.total >> percent >> row.sinceLast >> percent >>
                row.milliseconds >> unit >> row.name;
            read.push_back(row);
        }
        return read;
    }

    std::vector<Thread::LoadBuffer> buffers;
};

TEST_F(ThreadLoadTest, TheMainThreadIsListedUnderItsHeader) {
    const std::vector<std::string> lines = summary();
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_EQ("Thread CPU loads", lines[0]);
    EXPECT_EQ("tot -   since last", lines[1]);
    EXPECT_THAT(lines[2], MatchesRegex(" *[0-9]+ +[0-9]+\\.[0-9] %  +[0-9]+\\.[0-9] % +[0-9]+ ms main"));
    EXPECT_GE(lines[2].find_first_of(' ', lines[2].find_first_not_of(' ')), 5U);
    EXPECT_EQ(getpid(), std::stoi(lines[2]));
}

TEST_F(ThreadLoadTest, EveryKnownThreadHasARowWithWhatItUsed) {
    Gate worked;
    Gate leave;
    Thread thread(
        kOled,
        [&] {
            work(50);
            worked.open();
            leave.wait();
        },
        0);
    thread.start(false, 0);
    worked.wait();
    const std::vector<Row> read = rows();
    ASSERT_THAT(read, SizeIs(2));
    EXPECT_EQ(thread.tid(), read[0].tid);
    EXPECT_EQ("OLED", read[0].name);
    EXPECT_GE(read[0].milliseconds, 50);
    EXPECT_GT(read[0].total, 0);
    EXPECT_EQ(read[0].total, read[0].sinceLast);
    EXPECT_EQ(getpid(), read[1].tid);
    leave.open();
}

TEST_F(ThreadLoadTest, TheSecondSummarySaysWhoWorkedSinceTheFirst) {
    Gate worked;
    Gate leave;
    Thread thread(
        kOled,
        [&] {
            work(50);
            worked.open();
            leave.wait();
        },
        0);
    thread.start(false, 0);
    worked.wait();
    rows();
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    work(static_cast<int>(used.tv_sec * 1000 + used.tv_nsec / 1'000'000) + 100);
    const std::vector<Row> read = rows();
    ASSERT_THAT(read, SizeIs(2));
    EXPECT_LT(read[0].sinceLast, read[0].total);
    EXPECT_LT(read[0].sinceLast, 10);
    EXPECT_GT(read[1].sinceLast, 90);
    EXPECT_GE(read[1].milliseconds, 100);
    leave.open();
}

TEST_F(ThreadLoadTest, WhatIsKeptAreThisCallsReadings) {
    ParkedThread parked;
    summary();
    ASSERT_THAT(buffers, SizeIs(2));
    EXPECT_TRUE(pthread_equal(pthread_self(), buffers[1].thread));
    EXPECT_GT(buffers[1].cpuTime, 0);
    EXPECT_GE(buffers[1].total, buffers[0].cpuTime + buffers[1].cpuTime - 10'000'000);
    const std::int64_t before = buffers[1].cpuTime;
    summary();
    EXPECT_GT(buffers[1].cpuTime, before);
}

TEST_F(ThreadLoadTest, AThreadThatHasEndedIsForgotten) {
    ParkedThread parked;
    summary();
    EXPECT_THAT(buffers, SizeIs(2));
    parked.end();
    EXPECT_THAT(rows(), SizeIs(1));
    EXPECT_THAT(buffers, SizeIs(1));
}

TEST_F(ThreadLoadTest, AnotherThreadUnderAnOldIdBeginsAtNothing) {
    constexpr std::int64_t kDay = 86'400'000'000'000;
    buffers.push_back({pthread_self(), kDay, kDay});
    const std::vector<Row> read = rows();
    ASSERT_THAT(read, SizeIs(1));
    EXPECT_EQ(read[0].total, read[0].sinceLast);
    EXPECT_GT(read[0].total, 0);
    EXPECT_LE(read[0].total, 101);
}

}  // namespace
