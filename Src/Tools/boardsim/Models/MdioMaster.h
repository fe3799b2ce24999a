#pragma once

#include "Tools/boardsim/Models/FaultSchedule.h"
#include "Tools/boardsim/Models/MdioBus.h"
#include "Tools/boardsim/Models/ModelClock.h"
#include "Tools/boardsim/Models/RegisterBlock.h"

namespace boardsim {

/// A master for MDIO frames in the FPGA: one 32-bit register. A write is the frame to send, bit for bit as
/// IEEE 802.3 (22.2.4.5, table 22-12) lays it out behind the preamble:
///
/// | bits  | field      | values                                          |
/// |-------|------------|-------------------------------------------------|
/// | 31-30 | start      | 01                                              |
/// | 29-28 | opcode     | 10 read, 01 write                               |
/// | 27-23 | PHY        | address                                         |
/// | 22-18 | register   | number                                          |
/// | 17-16 | turnaround | 10 for a write; the PHY's affair for a read     |
/// | 15-0  | data       | of a write                                      |
///
/// A read finds bit 31 set while a frame is on the wires, bit 30 until the next one may follow, and the data
/// of the last read frame in bits 15-0. Zero after power-on. A frame with its preamble is 64 bits of 2.5 MHz,
/// one idle bit follows. Not thread-safe.
class MdioMaster final : public RegisterBlock {
public:
    static constexpr std::uint32_t kBytes = 4;
    static constexpr std::chrono::nanoseconds kFrameTime{25'600};
    static constexpr std::chrono::nanoseconds kIdleTime{400};

    /// @param bus lives as long as the master
    MdioMaster(MdioBus& bus, ModelClock clock) : bus_(bus), clock_(std::move(clock)) {}

    RegisterValue read(std::uint32_t offset, unsigned width) override;

    /// Refuses what is no frame, and any frame while another is on the wires.
    Refusal write(std::uint32_t offset, unsigned width, std::uint64_t value) override;

    /// A fault: after a frame that `when` strikes the master is busy for ever.
    void hang(const FaultSchedule& when) { hang_ = when; }

private:
    std::uint32_t busyBits() const;

    MdioBus& bus_;
    ModelClock clock_;
    ModelTime frameEnd_{};
    std::uint16_t data_ = 0;
    std::optional<FaultSchedule> hang_;
    bool isHanging_ = false;
};

}  // namespace boardsim
