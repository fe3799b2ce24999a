// What the running threads cost.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <mutex>
#include <ostream>

#include "Vl/Common/Threads/Thread.h"

namespace Valen {
namespace {

using LoadBuffer = Thread::LoadBuffer;

std::int64_t nanoseconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::int64_t cpuTime(pthread_t thread) {
    clockid_t clock{};
    return pthread_getcpuclockid(thread, &clock) == 0 ? nanoseconds(clock) : 0;
}

double percent(std::int64_t part, std::int64_t whole) {
    return whole > 0 ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0.0;
}

struct Row {
    int tid;
    const char* name;
    pthread_t thread;
};

/// What was remembered of the thread; nothing used so far when it is new.
LoadBuffer previous(const std::vector<LoadBuffer>& buffers, const LoadBuffer& now) {
    const auto found = std::find_if(buffers.begin(), buffers.end(),
                                    [&](const LoadBuffer& buffer) { return buffer.thread == now.thread; });
    // A thread that has used less than before is another one under the same pthread_t.
    if (found == buffers.end() || found->cpuTime > now.cpuTime) {
        return {now.thread, 0, 0};
    }
    return *found;
}

void write(std::ostream& out, const Row& row, const LoadBuffer& now, const LoadBuffer& before) {
    std::array<char, 128> line;
    std::snprintf(line.data(), line.size(), "%5d %5.1f %%  %5.1f %% %10lld ms %s\n", row.tid,
                  percent(now.cpuTime, now.total),
                  percent(now.cpuTime - before.cpuTime, now.total - before.total),
                  static_cast<long long>(now.cpuTime / 1'000'000), row.name);
    out << line.data();
}

}  // namespace

void Thread::getCPULoadSummary(std::ostream& out, std::vector<LoadBuffer>& buffers) {
    const std::lock_guard lock(mut);
    out << "Thread CPU loads\n"
           "tot -   since last\n";
    std::vector<Row> rows;
    rows.reserve(known_threads.size() + 1);
    for (const Thread* thread : known_threads) {
        rows.push_back({thread->tid(), thread->name(), thread->threadId_});
    }
    rows.push_back({getpid(), "main", mainThread});

    const std::int64_t total = nanoseconds(CLOCK_PROCESS_CPUTIME_ID);
    std::vector<LoadBuffer> readings;
    for (const Row& row : rows) {
        const LoadBuffer now{row.thread, cpuTime(row.thread), total};
        write(out, row, now, previous(buffers, now));
        readings.push_back(now);
    }
    // Threads that have ended are thereby forgotten.
    buffers = std::move(readings);
}

}  // namespace Valen
