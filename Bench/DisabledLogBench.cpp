// A debug message that nobody wants: the price of leaving it in the code.
#include <benchmark/benchmark.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

#include "Vl/Common/Log/LogImpl.h"

namespace {

/// With both loggers the message's argument is a number that changes; SERVICE and info are let through.
void ours(benchmark::State& state) {
    Valen::Log::vlLog = std::make_unique<Valen::Log::LogImpl>();
    if (Valen::Log::isWanted(Enums::OriginKey::OLED, Valen::Log::SeverityLevel::DEBUG) ||
        !Valen::Log::isWanted(Enums::OriginKey::OLED, Valen::Log::SeverityLevel::SERVICE)) {
        state.SkipWithError("the thresholds are not those that this measures");
    }
    int number = 0;
    for (auto _ : state) {
        VL_LOG(OLED, DEBUG, "number %d", number);
        benchmark::DoNotOptimize(++number);
    }
    Valen::Log::vlLog.reset();
}

void spdlogCall(benchmark::State& state) {
    spdlog::logger logger("bench", std::make_shared<spdlog::sinks::null_sink_mt>());
    logger.set_level(spdlog::level::info);
    int number = 0;
    for (auto _ : state) {
        logger.debug("number {}", number);
        benchmark::DoNotOptimize(++number);
    }
}

BENCHMARK(ours)->Name("disabled_log_call/ours");
BENCHMARK(spdlogCall)->Name("disabled_log_call/spdlog");

}  // namespace
