#pragma once

#include "Vl/Common/Threads/Event.h"
#include "Vl/Common/Threads/Mutex.h"
#include "Vl/Common/Threads/Thread.h"
#include "Vl/HAL/Chips/W1TempRound.h"

namespace Valen::HAL {

/// The thread that reads all temperature sensors of the process, one every ten seconds (see W1TempRound).
/// There is one, which starts with the first sensor and ends with the process, or when it is told to quit;
/// then the first sensor after none starts it again.
///
/// Any thread may add and remove sensors at any time. They wait while a sensor is being read or looked for.
class W1TempThread : public Thread {
public:
    /// Signals the poller's quitEvent() to take its next step at once.
    static constexpr Event::Bits kPollNow = Event::Bits{1} << 61;

    static W1TempThread& instance();
    ~W1TempThread();

    /// Adds a sensor, which must be removed before it is gone, and lets the poller take its next step at
    /// once.
    static void AddSensor(W1Temp* sensor);
    /// When it returns the sensor is not used any more. Without effect for a sensor that was not added.
    static void RemoveSensor(const W1Temp* sensor);

private:
    W1TempThread();
    void poll();

    Mutex sensorMutex_;
    W1TempRound round_;  ///< guarded by sensorMutex_
};

}  // namespace Valen::HAL
