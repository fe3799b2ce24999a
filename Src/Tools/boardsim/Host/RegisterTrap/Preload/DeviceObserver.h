#pragma once

#include "Tools/boardsim/Host/RegisterTrap/RegisterObserver.h"

namespace boardsim {

/// Who is to see the accesses to a mapping of "/dev/fpga" that is being made; null: it stays an ordinary
/// mapping. Whoever links the mmap of MappingInterposer.cpp provides this function. It is called in the
/// middle of the program's mmap, on any thread.
RegisterObserver* deviceObserver() noexcept;

}  // namespace boardsim
