#pragma once

#include <atomic>
#include <cstdint>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/HAL/Bus/W1Util.h"

namespace Valen::HAL {

/// A 1-Wire temperature sensor (family 0x22), chosen among those on a bus by its two bytes of user data, and
/// read through the "temp" file that the kernel gives the slave. From construction to destruction it is one
/// of the W1TempThread's sensors, which reads it and looks for it anew when it fails.
///
/// Any thread may ask for id(), isOpen() and temperature() at any time; the other operations are the
/// poller's.
class W1Temp {
public:
    static constexpr std::int32_t kUnknown = 0x7FFFFFFF;  ///< as temperature: no reading
    static constexpr int kAnyUserData = INT32_MIN;

    /// What updatetemp() tells.
    enum Reading : int { Failed = -1, Invalid = 0, Updated = 1 };

    /// Looks for the sensor and lets the poller have it.
    /// @param userData the user data wanted; kAnyUserData: any; another negative value v: any but ~v.
    /// @param bus      where to look, as for W1Util::FindW1.
    /// @param select   which one, when several match: the lowest handle (above 0), the highest (below 0), or
    ///                 none of them (0).
    W1Temp(unsigned int userData, int bus, int select);
    W1Temp(const W1Temp&) = delete;
    W1Temp& operator=(const W1Temp&) = delete;
    /// Takes the sensor from the poller, once that does not read it any more, and closes its file.
    ~W1Temp();

    /// The chosen slave, 0 when none matches. It is unique and serves as a serial number. When several match
    /// and none is to be chosen, it is the first that was listed.
    W1Util::W1Handle id() const { return {id_.load()}; }
    /// Whether a slave was chosen and its file is open.
    bool isOpen() const { return isOpen_.load(); }
    /// The last reading as the kernel's driver gives it, or kUnknown.
    std::int32_t temperature() const { return temperature_.load(); }

    /// Looks for the sensor anew. A slave whose user data cannot be read is asked ten times, 50 ms apart, and
    /// then passed over. Logged at DEBUG (origin CPCardInterface).
    void Find();
    /// Reads the temperature. A reading of 0xFFFFFFFF is invalid and leaves the temperature as it is; a short
    /// one closes the file.
    Reading updatetemp();
    /// The sensor is given up: its temperature is unknown. Looks for it anew.
    void Fail();

private:
    bool isWanted(W1Util::W1Handle slave) const;
    void open(const char* path);
    void close();

    // The poller writes what is atomic while others read it. The file is its alone.
    std::atomic<std::uint64_t> id_{0};
    Descriptor file_;
    std::atomic<bool> isOpen_{false};
    std::atomic<std::int32_t> temperature_{kUnknown};
    const std::int32_t userData_;
    const std::int32_t bus_;
    const std::int32_t select_;
};

}  // namespace Valen::HAL
