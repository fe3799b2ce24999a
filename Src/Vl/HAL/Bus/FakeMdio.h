#pragma once

#include "Vl/HAL/Bus/MDIO.h"

namespace Valen::HAL {

/// Takes the place of an MDIO master that does not exist: every access fails.
class FakeMdio : public MDIO {
public:
    bool setReg(int /*reg*/, int /*value*/) override { return false; }
    int getReg(int /*reg*/) override { return kFailed; }
    void changePhyAddress(int /*phyAddress*/) override {}
};

}  // namespace Valen::HAL
