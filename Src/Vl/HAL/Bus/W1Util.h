#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Vl/Common/Lists/vlslist.h"

namespace Valen::HAL {

/// The 1-Wire buses of the board and the slaves on them, as the kernel's w1 subsystem shows them below
/// "/sys/bus/w1/devices/": a directory "w1_bus_master<n>" for each bus, numbered from 1 without gaps, and a
/// directory "<family>-<serial>" for each slave, there and in its bus's directory.
///
/// No state; any thread may call anything. Slaves come and go at any time: what was found may be gone. Source
/// of the facts: the kernel's Documentation/w1.
class W1Util {
public:
    /// One slave: its family code in bits 8-15, its 48-bit serial in bits 16-63, bits 0-7 zero. 0 is none.
    struct W1Handle {
        std::uint64_t value = 0;

        unsigned int family() const { return static_cast<unsigned int>(value >> 8 & 0xFF); }
        std::uint64_t serial() const { return value >> 16; }
        /// Its directory's name, "28-0000001a2b3c".
        std::string name() const;

        bool operator==(const W1Handle&) const = default;
    };

    /// A family code, 1 to 0xFF.
    using Family = int;
    static constexpr Family kAnyFamily = -1;
    static constexpr Family kIdentityEeprom = 0x2D;
    static constexpr Family kTemperatureSensor = 0x22;

    /// Where a bus number is asked for: every bus.
    static constexpr int kAllBusses = -1;

    static constexpr const char* w1_path = "/sys/bus/w1/devices/";
    static constexpr const char* w1_master = "w1_bus_master";

    /// Pushes the slaves of that family on `bus`, or on any, at the front of `out`, in the order in which the
    /// file system lists them. @return false when the directory cannot be listed (to its end).
    static bool FindW1(vlslist<W1Handle>& out, Family family, int bus);

    /// Triggers a search, which takes the kernel up to seconds; slaves found appear by and by. @return
    /// whether every search could be triggered; one that cannot is logged (origin OneWire).
    static bool searchSlaves(int bus = kAllBusses);

    static int numberOfBusses();
    /// @return the first bus that holds the slave, or -1.
    static int findBus(W1Handle slave);

    /// Makes the kernel forget a slave until the next search finds it. @return whether it did; logged either
    /// way (failures: origin OneWire; success: PTPCPeriph).
    static bool removeW1Slave(W1Handle slave);
    /// The same for all slaves on all buses. @return whether every one was removed.
    static bool removeAllW1Slaves();

    /// Reads a slave's directory name: two hexadecimal numbers with '-' between them, neither of them zero.
    /// Of the second the low 48 bits count. @return nothing for every other text.
    static std::optional<W1Handle> parseName(std::string_view name);

    /// @return the path of one of the slave's files.
    static std::string filePath(W1Handle slave, std::string_view file);
};

static_assert(sizeof(W1Util::W1Handle) == 8);

}  // namespace Valen::HAL
