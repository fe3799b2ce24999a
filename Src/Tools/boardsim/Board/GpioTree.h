#pragma once

#include <map>
#include <memory>
#include <string>

#include "Tools/boardsim/Board/FileTrace.h"
#include "Tools/boardsim/Host/ServedTree.h"
#include "Tools/boardsim/Models/GpioClass.h"

namespace boardsim {

/// "/sys/class/gpio" of a board. Not thread-safe.
class GpioTree {
public:
    /// @param gpio outlives this object and what root() gave.
    GpioTree(GpioClass& gpio, Tell tell);
    GpioTree(const GpioTree&) = delete;
    GpioTree& operator=(const GpioTree&) = delete;

    /// Its functions refer to this object.
    std::shared_ptr<const ServedDirectory> root() const { return root_; }

private:
    std::vector<ServedEntry> entries();

    GpioClass& gpio_;
    Tell tell_;
    std::vector<ServedEntry> files_;
    std::map<std::string, std::shared_ptr<const ServedDirectory>> shown_;
    std::shared_ptr<const ServedDirectory> root_;
};

}  // namespace boardsim
