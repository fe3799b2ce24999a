#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace boardsim {

/// Writes what happens on the board, one event a line, in the order in which it is told:
///
///         12.345 screen frame 15360 bytes at 0
///         12.399 fpga read 0x1004 32 0x00000000
///        812.020 … repeated 51234 times
///
/// The first column are milliseconds since the trace began. A polling program reads the same register over
/// and over: repetitions of a line told with addRepeatable() are counted and written as one line when
/// something else happens or the trace ends. Not thread-safe.
class TraceLog {
public:
    using Clock = std::chrono::steady_clock;
    using Sink = std::function<void(std::string_view line)>;

    /// @param sink gets every line with its line end.
    TraceLog(Sink sink, Clock::time_point start) : sink_(std::move(sink)), start_(start) {}

    void add(Clock::time_point now, std::string_view event);
    void addRepeatable(Clock::time_point now, std::string_view event);

    /// Writes the repetitions counted so far. To be called when nothing more will come.
    void finish();

private:
    void writeLine(Clock::time_point when, std::string_view event);

    Sink sink_;
    Clock::time_point start_;
    std::string repeatable_;  ///< the last event if it may be repeated, else empty
    unsigned long repeats_ = 0;
    Clock::time_point lastRepeat_{};
};

}  // namespace boardsim
