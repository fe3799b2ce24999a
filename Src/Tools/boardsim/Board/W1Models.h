#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/W1Description.h"
#include "Tools/boardsim/Board/W1Tree.h"

namespace boardsim {

/// The 1-Wire buses of a board with their chips, searched once as the kernel does when it starts. Not
/// thread-safe.
class W1Models {
public:
    W1Models(const std::vector<W1BusPart>& parts, Tell tell);

    ServedTree tree() const { return {"/sys/bus/w1", tree_.root()}; }

    /// Lets a slave, named as in its directory ("22-00000a1b2c3d"), do something wrong:
    ///
    /// | action      | what happens                                                                     |
    /// |-------------|----------------------------------------------------------------------------------|
    /// | unplug      | the chip is off the bus                                                          |
    /// | rom-crc     | a search does not find it                                                        |
    /// | crc         | a bit is wrong in what is read                                                   |
    /// | short-read  | a read of several bytes gives half                                               |
    /// | short-write | a write of several bytes takes half                                              |
    /// | torn=BYTES  | the power fails in a write, after so many bytes; EEPROMs only                    |
    /// | value=C     | it is so warm, in degrees Celsius; thermometers only, from the start and for good |
    ///
    /// @throws std::invalid_argument when there is no such slave or action.
    void apply(const Fault& fault);

private:
    W1Slave& slaveNamed(const Fault& fault) const;

    std::vector<std::unique_ptr<W1Bus>> buses_;
    W1Tree tree_;
};

}  // namespace boardsim
