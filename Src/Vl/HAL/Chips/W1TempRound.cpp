#include "Vl/HAL/Chips/W1TempRound.h"

#include <iterator>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Chips/W1Temp.h"

namespace Valen::HAL {
namespace {

constexpr int kWait = 10'000;
constexpr int kWaitAfterInvalidReading = 1'000;
constexpr int kMostFailures = 6;

}  // namespace

void W1TempRound::add(W1Temp* sensor) {
    if (isAtEnd()) {
        sensors_.push_front(sensor);
    } else {
        sensors_.insert_after(current_, sensor);
    }
}

void W1TempRound::remove(const W1Temp* sensor) {
    auto before = sensors_.before_begin();
    for (auto each = sensors_.begin(); each != sensors_.end(); each = std::next(before)) {
        if (*each != sensor) {
            before = each;
            continue;
        }
        if (each == current_) {
            moveOn();
        }
        sensors_.erase_after(before);
    }
}

bool W1TempRound::hasExactlyOne() const {
    return !sensors_.empty() && std::next(sensors_.begin()) == sensors_.end();
}

int W1TempRound::step() {
    if (isAtEnd()) {
        current_ = sensors_.begin();
    }
    if (isAtEnd()) {
        return kWait;
    }
    W1Temp& sensor = **current_;
    const W1Temp::Reading reading = sensor.updatetemp();
    if (reading == W1Temp::Updated) {
        moveOn();
        return kWait;
    }
    if (++failures_ == kMostFailures) {
        sensor.Fail();
        moveOn();
        return kWait;
    }
    if (reading == W1Temp::Failed) {
        return kWait;
    }
    VL_LOG(CPCardInterface, DEBUG, "failed to read temp for %s", sensor.id().name().c_str());
    return kWaitAfterInvalidReading;
}

void W1TempRound::moveOn() {
    ++current_;
    failures_ = 0;
}

}  // namespace Valen::HAL
