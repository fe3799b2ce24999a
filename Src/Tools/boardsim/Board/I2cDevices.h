#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/I2cDescription.h"
#include "Tools/boardsim/Host/ActingFile.h"
#include "Tools/boardsim/Models/I2cBus.h"
#include "Tools/boardsim/Models/Lm75.h"
#include "Tools/boardsim/Models/Sx1509.h"

namespace boardsim {

/// The I2C buses of a board with their chips. Not thread-safe.
class I2cDevices {
public:
    /// Takes a transfer in the words of the trace. What reads is repeatable: it comes in long rows when a
    /// program polls.
    using Listener = std::function<void(std::string_view event, bool isRepeatable)>;

    explicit I2cDevices(const I2cDescription& description);
    I2cDevices(const I2cDevices&) = delete;
    I2cDevices& operator=(const I2cDevices&) = delete;

    /// "/dev/i2c-N" for each bus, and what kernel drivers make of chips. Their functions refer to this
    /// object.
    std::vector<ActingFile> files();

    /// Prepares a fault of a chip or of a bus. A chip is called by its name in the registry, or as
    /// "BUS@0xADDRESS", a bus by its name in the registry or as "i2c-N".
    /// @return false when no device here is of that kind.
    /// @throws std::invalid_argument when there is no such thing, or it cannot have this fault.
    bool apply(const Fault& fault);

    /// Every transfer is told to `listener`.
    void listen(const Listener& listener);

private:
    struct Chip {
        std::unique_ptr<I2cTarget> target;
        Lm75* sensor = nullptr;
        Sx1509* expander = nullptr;
    };
    struct Place {
        unsigned bus;
        std::optional<std::uint8_t> address;
    };

    static Chip makeChip(const I2cDevice& device, const EepromGeometry& geometry);
    Place placeOf(const Fault& fault) const;
    std::optional<unsigned> busNamed(std::string_view name) const;
    I2cFault faultOf(const Fault& fault, const Chip* chip) const;

    I2cDescription description_;
    std::map<unsigned, I2cBus> buses_;
    std::map<std::pair<unsigned, std::uint8_t>, Chip> chips_;
};

}  // namespace boardsim
