#pragma once

#include <cstdint>

#include "Vl/HAL/Board/VitcCode.h"

namespace Valen {

/// The registers of the FPGA's central sync block, of which the board's timing comes. Does not own them; a
/// view that is made where it is needed. Accesses are single volatile loads and stores without a lock.
class SyncBlock {
public:
    /// @param registers the block's first register.
    explicit SyncBlock(volatile std::uint32_t* registers) : registers_(registers) {}

    std::uint32_t syncWord() const;
    /// The 56-bit identifiers of this card and of the network's sync master.
    std::uint64_t id() const;
    std::uint64_t masterId() const;
    bool isMaster() const;
    void setNetConfigId(std::uint32_t id);

    // The time code runs on at any time. A carry into the high word while the words are read or written would
    // mix two times; what follows does not let that happen.

    VitcRate vitcRate() const;
    /// Both words, of the same moment.
    VitcCode vitc() const;
    /// Sets both words; again, when the high one was seen to have changed meanwhile.
    void setVitc(VitcCode code);
    /// Sets both words, with the low one at zero while the high one is written. Without a look at the result.
    void startVitc(VitcCode code);

private:
    std::uint64_t identifier(unsigned int lowWord) const;

    volatile std::uint32_t* registers_;
};

}  // namespace Valen
