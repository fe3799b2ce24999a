#include "Vl/HAL/Chips/W1TempThread.h"

#include <mutex>

namespace Valen::HAL {
namespace {

constexpr int kStackSize = 20'480;

}  // namespace

W1TempThread& W1TempThread::instance() {
    static W1TempThread poller;
    return poller;
}

W1TempThread::W1TempThread()
    : Thread(
          Enums::OriginKey::CPCardInterface, [this] { poll(); }, 0) {}

W1TempThread::~W1TempThread() {
    // The list must outlive the thread.
    quitAndJoin();
}

void W1TempThread::AddSensor(W1Temp* sensor) {
    W1TempThread& poller = instance();
    {
        const std::lock_guard lock(poller.sensorMutex_);
        poller.round_.add(sensor);
        if (poller.round_.hasExactlyOne()) {
            // Refused while it still runs from an earlier first sensor: meant.
            poller.start(false, kStackSize);
        }
    }
    poller.quitEvent().SetBits(kPollNow);
}

void W1TempThread::RemoveSensor(const W1Temp* sensor) {
    W1TempThread& poller = instance();
    const std::lock_guard lock(poller.sensorMutex_);
    poller.round_.remove(sensor);
}

void W1TempThread::poll() {
    Event::Bits signals = 0;
    while ((signals & Event::kSet) == 0) {
        int milliseconds = 0;
        {
            const std::lock_guard lock(sensorMutex_);
            milliseconds = round_.step();
        }
        signals = quitEvent().WaitTimeoutBits(milliseconds, true);
        reportAlive();
    }
}

}  // namespace Valen::HAL
