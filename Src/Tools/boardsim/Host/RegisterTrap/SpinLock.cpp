#include "Tools/boardsim/Host/RegisterTrap/SpinLock.h"

#include <sched.h>

namespace boardsim {

void SpinLock::lock() noexcept {
    constexpr int kTriesBeforeYielding = 64;
    for (int tries = 0; taken_.test_and_set(std::memory_order_acquire); ++tries) {
        // The owner may wait for the reader of its event, or for this very processor.
        if (tries >= kTriesBeforeYielding) {
            sched_yield();
        }
    }
}

}  // namespace boardsim
