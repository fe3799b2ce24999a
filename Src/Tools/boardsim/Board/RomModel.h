#pragma once

#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/FileTrace.h"
#include "Tools/boardsim/Board/RomDescription.h"
#include "Tools/boardsim/Models/IdentityRom.h"

namespace boardsim {

/// The identity ROM of a board, as "/dev/bootrom". Not thread-safe.
class RomModel {
public:
    RomModel(const RomPart& part, Tell tell);
    RomModel(const RomModel&) = delete;
    RomModel& operator=(const RomModel&) = delete;

    /// Its functions refer to this object.
    ActingFile device();

    /// Lets the device "bootrom" do something wrong:
    ///
    /// | action         | what happens                                        |
    /// |----------------|-----------------------------------------------------|
    /// | fail           | an access fails with an I/O error                   |
    /// | short-read     | a read of several bytes gives half                  |
    /// | short-write    | a write of several bytes takes half                 |
    /// | corrupt=OFFSET | the byte there is inverted in what is read          |
    ///
    /// @throws std::invalid_argument for another device or action.
    void apply(const Fault& fault);

private:
    Tell tell_;
    IdentityRom rom_;
};

}  // namespace boardsim
