// main() of the hardware layer's benchmarks: in a private mount namespace, with a "/dev" and a "/sys/bus" of
// their own.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <exception>
#include <iostream>

#include "Tools/boardsim/Host/Mounts.h"

int main(int argc, char** argv) {
    try {
        boardsim::enterPrivateMounts();
        boardsim::coverDirectory("/dev", boardsim::keepEverything);
        boardsim::coverDirectory("/sys/bus", boardsim::keepNothing);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
