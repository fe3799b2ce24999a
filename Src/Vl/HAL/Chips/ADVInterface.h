#pragma once

#include <cstdint>

namespace Valen {

/// The board's ADV video chip (an encoder or sync generator): 8-bit registers, accessed by number, whatever
/// bus the chip is on. Handed out by boards, shared. Accesses block for their transfer; nothing is logged or
/// thrown. Not thread-safe.
class ADVInterface {
public:
    ADVInterface() = default;
    ADVInterface(const ADVInterface&) = delete;
    ADVInterface& operator=(const ADVInterface&) = delete;
    virtual ~ADVInterface() = default;

    /// Writes one register. @return 1 on success.
    virtual int setReg(int reg, std::uint8_t value) = 0;
    /// Reads one register. @return its value, 0 to 255.
    virtual int getReg(int reg) = 0;
};

}  // namespace Valen
