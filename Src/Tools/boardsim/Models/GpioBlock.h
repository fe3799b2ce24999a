#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace boardsim {

/// A GPIO controller: its name and which lines are its own.
struct GpioChip {
    std::string label;
    unsigned base = 0;   ///< number of its first line
    unsigned count = 0;  ///< how many lines it has

    bool operator==(const GpioChip&) const = default;
};

/// All GPIO lines of the processor, by their numbers in the kernel. A line is an input until it is made an
/// output; what drives an input from outside is set with drive(), low from the start.
///
/// Refuses lines that no chip has (EINVAL), a line that is taken already (EBUSY), giving back a line that
/// nobody took (EINVAL) and setting an input (EPERM). Not thread-safe.
/// Source: the kernel's Documentation/driver-api/gpio/legacy.rst.
class GpioBlock {
public:
    /// @param chips without lines in common.
    explicit GpioBlock(std::vector<GpioChip> chips);

    const std::vector<GpioChip>& chips() const { return chips_; }
    bool has(unsigned line) const { return find(line) != nullptr; }

    std::errc request(unsigned line);
    std::errc free(unsigned line);
    std::errc makeInput(unsigned line);
    std::errc makeOutput(unsigned line, bool high);
    std::errc set(unsigned line, bool high);

    /// The level on the line: of an output its own, of an input what drives it.
    /// @return nothing when there is no such line.
    std::optional<bool> level(unsigned line) const;
    std::optional<bool> isOutput(unsigned line) const;
    bool isTaken(unsigned line) const;

    /// What drives the line from outside; an output does not care.
    void drive(unsigned line, bool high);
    /// A short circuit: the line has this level, whatever it is set to.
    void stick(unsigned line, bool high);

private:
    struct Line {
        unsigned number;
        bool taken = false;
        bool output = false;
        bool latch = false;   ///< level as an output
        bool driven = false;  ///< level as an input
        std::optional<bool> stuck{};
    };

    Line* find(unsigned line);
    const Line* find(unsigned line) const;

    std::vector<GpioChip> chips_;
    std::vector<Line> lines_;
};

}  // namespace boardsim
