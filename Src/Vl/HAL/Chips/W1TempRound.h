#pragma once

#include "Vl/Common/Lists/vlslist.h"

namespace Valen::HAL {

class W1Temp;

/// The round that the poller makes of its temperature sensors, one sensor a step. A sensor that fails is
/// tried again, and after six failures in a row looked for anew and passed over. Not thread-safe.
class W1TempRound {
public:
    W1TempRound() : current_(sensors_.end()) {}

    /// The sensor's turn comes behind that of the next step's sensor, or first when the round is to begin
    /// anew. The sensor is not owned and must be removed before it is gone.
    void add(W1Temp* sensor);
    /// Without effect for a sensor that is not there.
    void remove(const W1Temp* sensor);
    bool hasExactlyOne() const;

    /// Reads the sensor whose turn it is. @return how many milliseconds to wait before the next step.
    int step();

private:
    using Sensors = vlslist<W1Temp*>;

    bool isAtEnd() const { return current_ == sensors_.cend(); }
    void moveOn();

    Sensors sensors_;
    Sensors::iterator current_;  ///< whose turn it is
    int failures_ = 0;           ///< of the current sensor, in a row
};

}  // namespace Valen::HAL
