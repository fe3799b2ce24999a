#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "Tools/boardsim/Models/Phy.h"

namespace boardsim {

/// One management frame of IEEE 802.3 clause 22.
struct MdioFrame {
    bool isWrite = false;
    unsigned phy = 0;  ///< 0-31
    unsigned reg = 0;  ///< 0-31
    std::uint16_t data = 0;
    bool isAnswered = true;  ///< whether a PHY drove or took the data
};

/// The two wires between a master and up to 32 PHYs. Not thread-safe.
/// Source: IEEE 802.3, 22.2.4.5.
class MdioBus {
public:
    static constexpr unsigned kAddresses = 32;
    /// What a read finds that no PHY answers: the data line is pulled up.
    static constexpr std::uint16_t kNobody = 0xFFFF;

    /// @param address below kAddresses. The PHY must live as long as the bus.
    void attach(unsigned address, Phy& phy) { phys_[address] = &phy; }

    /// Every frame on the bus is told to `listener`, after it has taken effect.
    void listen(std::function<void(const MdioFrame&)> listener) { listener_ = std::move(listener); }

    /// @param address, reg below 32
    std::uint16_t read(unsigned address, unsigned reg);
    void write(unsigned address, unsigned reg, std::uint16_t data);

private:
    Phy* answering(unsigned address);
    void tell(const MdioFrame& frame) const;

    std::array<Phy*, kAddresses> phys_{};
    std::function<void(const MdioFrame&)> listener_;
};

}  // namespace boardsim
