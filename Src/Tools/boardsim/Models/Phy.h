#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "Tools/boardsim/Models/FaultSchedule.h"
#include "Tools/boardsim/Models/ModelClock.h"

namespace boardsim {

/// A copper PHY for 10, 100 and 1000 Mbit/s as the management registers of IEEE 802.3 clause 22 show it:
/// registers 0-10 and 15 with reset, power-down, autonegotiation and its results, and a link bit that
/// remembers that the link was down. A chip adds its own registers.
///
/// Its link partner can do 10 and 100 Mbit/s in half and full duplex and 1000 Mbit/s in full duplex, all by
/// autonegotiation; a PHY that forces 10 or 100 Mbit/s gets a link by parallel detection. Real
/// autonegotiation takes seconds; here it takes 10 ms. Not thread-safe.
class Phy {
public:
    static constexpr unsigned kRegisters = 32;
    static constexpr std::chrono::microseconds kResetTime{200};
    static constexpr std::chrono::milliseconds kNegotiationTime{10};

    /// One register of a chip after power-on, and which of its bits a program can change.
    struct Register {
        unsigned number;
        std::uint16_t value;
        std::uint16_t writable;
    };

    enum class Speed : std::uint8_t { Mbit10 = 0, Mbit100 = 1, Mbit1000 = 2 };
    struct Link {
        Speed speed;
        bool isFullDuplex;
    };

    Phy(const Phy&) = delete;
    Phy& operator=(const Phy&) = delete;
    virtual ~Phy() = default;

    /// @param reg below kRegisters. A read may change what the next one finds.
    virtual std::uint16_t read(unsigned reg);
    virtual void write(unsigned reg, std::uint16_t value);

    /// A fault: frames that `when` strikes find nobody at the PHY's address.
    void beSilent(const FaultSchedule& when) { silence_ = when; }

    /// To be asked once for every frame. @return whether the PHY takes part in it
    bool answers() { return !silence_ || !silence_->strikes(); }

    /// A fault: the link is made anew, and whenever `when` strikes it does not come up.
    void loseLink(const FaultSchedule& when);

protected:
    /// @param registers of the chip, those of clause 22 included. What is not listed reads 0 and cannot be
    ///                  written. The table outlives the PHY.
    Phy(std::span<const Register> registers, ModelClock clock);

    /// What a chip makes of registers 11-14 and 16-31, and how it resets. By default they are plain memory
    /// and reset puts every register back.
    virtual std::uint16_t readOwn(unsigned reg) { return stored(reg); }
    virtual void writeOwn(unsigned reg, std::uint16_t value) { store(reg, value); }
    virtual void resetRegisters() { restoreAll(); }

    /// What the register's memory holds, without side effects.
    std::uint16_t stored(unsigned reg) const { return values_[reg]; }

    /// Changes the bits that a program can change.
    void store(unsigned reg, std::uint16_t value);

    /// Puts all registers back to their values after power-on.
    void restoreAll();

    /// Takes the link down and makes it anew, with what is advertised now.
    void restartLink();

    /// The link as it is now; nothing while it is down.
    std::optional<Link> link() const;
    bool hasNegotiated() const;

    /// Whether a page of the partner has been received since the last time that this was asked.
    bool takePageReceived();

private:
    bool isResetting() const { return clock_() < resetEnd_; }
    std::uint16_t control() const;
    std::uint16_t status();
    std::uint16_t expansion();
    std::uint16_t partnerAbility() const;
    std::uint16_t gigabitStatus() const;
    void writeControl(std::uint16_t value);
    std::optional<Link> negotiated() const;
    std::optional<Link> forced() const;

    std::span<const Register> registers_;
    ModelClock clock_;
    std::array<std::uint16_t, kRegisters> values_{};
    std::array<std::uint16_t, kRegisters> writable_{};
    ModelTime resetEnd_{};
    ModelTime linkUp_{};                   ///< when the link comes up that is being made
    std::uint16_t advertised_ = 0;         ///< register 4 when the link was last made
    std::uint16_t advertisedGigabit_ = 0;  ///< register 9 at that moment
    bool linkWasDown_ = true;              ///< since register 1 was read
    bool pageWasTaken_ = false;            ///< the page of this negotiation
    bool pageWasShown_ = false;            ///< the same, in the expansion register
    bool hasPartner_ = true;
    std::optional<FaultSchedule> silence_;
    std::optional<FaultSchedule> loss_;
};

}  // namespace boardsim
