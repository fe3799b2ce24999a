// Whole processes, from start to end, on the board that this program itself runs on.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void run(benchmark::State& state, const char* program, const char* option) {
    char* arguments[5] = {const_cast<char*>(program)};
    char** next = arguments + 1;
    if (option != nullptr) {
        *next++ = const_cast<char*>(option);
    }
    *next++ = const_cast<char*>("Hello,");
    *next++ = const_cast<char*>("panel");
    for (auto _ : state) {
        pid_t child = -1;
        int status = 0;
        if (posix_spawn(&child, program, nullptr, nullptr, arguments, environ) != 0 ||
            waitpid(child, &status, 0) != child || status != 0) {
            state.SkipWithError("the program failed");
            break;
        }
    }
}

BENCHMARK_CAPTURE(run, ours, PANELPROBE, "--print")->Name("print_process/ours")->UseRealTime();
BENCHMARK_CAPTURE(run, bare, BARE_PROGRAM, nullptr)->Name("print_process/bare_program")->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
