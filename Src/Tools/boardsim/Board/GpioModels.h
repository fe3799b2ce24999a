#pragma once

#include <memory>
#include <vector>

#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/GpioTree.h"
#include "Tools/boardsim/Models/GpioBlock.h"

namespace boardsim {

/// The GPIO lines of a board, as "/dev/gpio" and as the kernel's class. Not thread-safe.
class GpioModels {
public:
    GpioModels(std::vector<GpioChip> chips, Tell tell);
    GpioModels(const GpioModels&) = delete;
    GpioModels& operator=(const GpioModels&) = delete;

    GpioBlock& lines() { return lines_; }

    /// Their functions refer to this object.
    ActingFile device();
    ServedTree tree() const { return {"/sys/class/gpio", tree_.root()}; }

    /// Lets a line, named by chip and place ("oled_pio+3"), do something wrong, for good:
    ///
    /// | action  | what happens                               |
    /// |---------|--------------------------------------------|
    /// | stuck=0 | it is low whatever is done, or high with 1 |
    /// | value=1 | it is driven high from outside             |
    /// | taken   | a driver has taken it already              |
    ///
    /// @throws std::invalid_argument when there is no such line or action.
    void apply(const Fault& fault);

private:
    unsigned lineNamed(const Fault& fault) const;

    Tell tell_;
    GpioBlock lines_;
    GpioClass class_;
    GpioTree tree_;
};

}  // namespace boardsim
