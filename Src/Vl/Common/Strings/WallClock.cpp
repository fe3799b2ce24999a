#include "Vl/Common/Strings/WallClock.h"

#include "Vl/System/LinuxClock.h"

namespace Valen {

namespace {

timespec now() {
    return system::clock::LinuxClock::getTime(system::clock::Realtime);
}

}  // namespace

int GetSecMS() {
    return static_cast<int>(now().tv_nsec / 1'000'000);
}

std::int64_t GetUnsafeTimeStamp() {
    return GetTimeStampInMicroseconds() / 1000;
}

std::int64_t GetTimeStampInMicroseconds() {
    const timespec time = now();
    return std::int64_t{time.tv_sec} * 1'000'000 + time.tv_nsec / 1000;
}

void MsecToTimeval(std::int64_t ms, timeval& time) {
    time.tv_sec = ms / 1000;
    time.tv_usec = ms % 1000 * 1000;
}

}  // namespace Valen
