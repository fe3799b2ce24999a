#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <vector>

#include "Vl/HAL/Bus/MDIO.h"

/// One access to a PHY's register.
struct MdioAccess {
    bool isWrite;
    int reg;
    int value;

    bool operator==(const MdioAccess&) const = default;
};
std::ostream& operator<<(std::ostream& out, const MdioAccess& access);

inline MdioAccess write(int reg, int value) {
    return {true, reg, value};
}
inline MdioAccess read(int reg, int value) {
    return {false, reg, value};
}

/// A PHY of plain registers that records every access and can fail one of them.
class RecordedMdio : public Valen::HAL::MDIO {
public:
    bool setReg(int reg, int value) override;
    int getReg(int reg) override;
    void changePhyAddress(int phyAddress) override;

    static constexpr std::size_t kNone = ~std::size_t{0};

    /// Which access fails, counted from 0.
    std::size_t failing = kNone;
    /// Registers that were never written or set here are 0.
    std::map<int, int> registers;
    /// A failed read has the value -1; a failed write changes no register.
    std::vector<MdioAccess> accesses;
};
