#include "Tools/boardsim/Host/TraceLog.h"

#include <array>
#include <cstdio>

namespace boardsim {

void TraceLog::add(Clock::time_point now, std::string_view event) {
    finish();
    repeatable_.clear();
    writeLine(now, event);
}

void TraceLog::addRepeatable(Clock::time_point now, std::string_view event) {
    if (event == repeatable_) {
        ++repeats_;
        lastRepeat_ = now;
        return;
    }
    add(now, event);
    repeatable_ = event;
}

void TraceLog::finish() {
    if (repeats_ == 0) {
        return;
    }
    writeLine(lastRepeat_, "… repeated " + std::to_string(repeats_) + (repeats_ == 1 ? " time" : " times"));
    repeats_ = 0;
}

void TraceLog::writeLine(Clock::time_point when, std::string_view event) {
    const double milliseconds = std::chrono::duration<double, std::milli>(when - start_).count();
    std::array<char, 32> stamp{};
    std::snprintf(stamp.data(), stamp.size(), "%12.3f ", milliseconds);
    sink_(stamp.data() + std::string(event) + "\n");
}

}  // namespace boardsim
