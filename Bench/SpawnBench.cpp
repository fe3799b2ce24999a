// Running a tiny program and waiting for it, from a small process and from a large one.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>

#include "Vl/Common/Files/DirUtil.h"

namespace {

constexpr const char* kProgram = TINY_PROGRAM;

/// Memory in pages of 4 KiB, each touched, as a process has that works with it. What fork copies is one entry
/// a page; what vfork copies is nothing, so "ours" takes as long in both sizes.
class TouchedMemory {
public:
    explicit TouchedMemory(std::size_t size)
        : size_(size),
          bytes_(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (isValid()) {
            madvise(bytes_, size_, MADV_NOHUGEPAGE);
            std::memset(bytes_, 1, size_);
        }
    }
    TouchedMemory(const TouchedMemory&) = delete;
    TouchedMemory& operator=(const TouchedMemory&) = delete;
    ~TouchedMemory() {
        if (isValid()) {
            munmap(bytes_, size_);
        }
    }
    bool isValid() const { return bytes_ != MAP_FAILED; }

private:
    std::size_t size_;
    void* bytes_;
};

int runOurs() {
    return Valen::DirUtil::Exec(kProgram, nullptr);
}

int runPosixSpawn() {
    std::array<char*, 2> arguments{const_cast<char*>(kProgram), nullptr};
    pid_t child = -1;
    int status = -1;
    if (posix_spawnp(&child, kProgram, nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child) {
        return -1;
    }
    return WEXITSTATUS(status);
}

void spawn(benchmark::State& state, int (*run)(), std::size_t megabytes) {
    const TouchedMemory memory(megabytes << 20);
    if (!memory.isValid() || Valen::DirUtil::Exec("sh", "-c", "exit 7", nullptr) != 7) {
        state.SkipWithError("no memory, or not the program's exit status");
    }
    for (auto _ : state) {
        if (run() != 0) {
            state.SkipWithError("the program failed");
            break;
        }
    }
}

BENCHMARK_CAPTURE(spawn, ours, runOurs, 1)->Name("spawn/ours")->UseRealTime();
BENCHMARK_CAPTURE(spawn, peer, runPosixSpawn, 1)->Name("spawn/posix_spawn")->UseRealTime();
BENCHMARK_CAPTURE(spawn, oursLarge, runOurs, 256)->Name("spawn_from_256mb/ours")->UseRealTime();
BENCHMARK_CAPTURE(spawn, peerLarge, runPosixSpawn, 256)->Name("spawn_from_256mb/posix_spawn")->UseRealTime();

}  // namespace
