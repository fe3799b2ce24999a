#include "Tools/boardsim/Models/W1Slave.h"

namespace boardsim {

FileAnswer W1Slave::admit(std::size_t wanted, unsigned W1Faults::*shortTransfers) {
    if (unplugAfter_ == 0U) {
        unplug();
        unplugAfter_.reset();
    } else if (unplugAfter_) {
        --*unplugAfter_;
    }
    if (!plugged_ || happens(&W1Faults::failures)) {
        return {0, std::errc::io_error};
    }
    return {happens(shortTransfers) ? wanted / 2 : wanted};
}

bool W1Slave::happens(unsigned W1Faults::*fault) {
    unsigned& left = faults_.*fault;
    if (left == 0) {
        return false;
    }
    --left;
    return true;
}

}  // namespace boardsim
