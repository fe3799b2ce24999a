#include "Tools/boardsim/Models/W1Slave.h"

namespace boardsim {

bool W1Slave::answersSearch() {
    return isThere() && !happens(&W1Faults::romErrors);
}

FileAnswer W1Slave::admit(std::size_t wanted, Kind shortTransfers) {
    if (!isThere()) {
        return {0, std::errc::io_error};
    }
    const bool canBeShort = wanted > 1;
    return {canBeShort && happens(shortTransfers) ? wanted / 2 : wanted};
}

bool W1Slave::happens(Kind fault) {
    std::optional<FaultSchedule>& schedule = faults_.*fault;
    return schedule && schedule->strikes();
}

}  // namespace boardsim
