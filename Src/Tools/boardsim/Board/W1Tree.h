#pragma once

#include <map>
#include <memory>
#include <vector>

#include "Tools/boardsim/Board/FileTrace.h"
#include "Tools/boardsim/Host/ServedTree.h"
#include "Tools/boardsim/Models/W1Bus.h"

namespace boardsim {

/// "/sys/bus/w1" of a board: below "devices" a directory for each bus with its attributes and the devices
/// found on it, and a link to each device. Not thread-safe.
/// Source: the kernel's Documentation/w1/w1-generic.rst.
class W1Tree {
public:
    /// @param buses outlive this object and what root() gave.
    W1Tree(const std::vector<std::unique_ptr<W1Bus>>& buses, Tell tell);
    W1Tree(const W1Tree&) = delete;
    W1Tree& operator=(const W1Tree&) = delete;

    /// Its functions refer to this object.
    std::shared_ptr<const ServedDirectory> root() const { return root_; }

private:
    using DevicePointer = std::shared_ptr<W1Device>;

    /// A bus and what has been shown of its devices.
    struct Shown {
        W1Bus* bus;
        std::vector<ServedEntry> attributes;
        std::shared_ptr<const ServedDirectory> directory{};
        std::map<DevicePointer, std::shared_ptr<const ServedDirectory>> devices{};
        std::map<DevicePointer, std::shared_ptr<const ServedLink>> links{};
    };

    std::vector<ServedEntry> devices();
    std::vector<ServedEntry> entriesOf(Shown& shown);
    void update(Shown& shown);
    std::shared_ptr<const ServedDirectory> directoryOf(W1Device& device) const;

    Tell tell_;
    std::vector<Shown> buses_;
    std::shared_ptr<const ServedDirectory> root_;
};

}  // namespace boardsim
