#pragma once

#include <string>
#include <vector>

namespace support {

/// What a program left behind when it ran on the virtual board.
struct BoardRun {
    int status = -1;                 ///< exit status as a shell sees it
    std::string out;                 ///< standard output
    std::string err;                 ///< standard error
    std::string frame;               ///< the last whole frame as it was written, empty when there was none
    std::vector<std::string> log;    ///< syslog lines, "facility.level program: text"
    std::vector<std::string> trace;  ///< frames, states, seeks and register accesses, when traced
};

/// A virtual board that is described in one expression and then runs a program:
/// `board().keys("left").without("gpio").run({kPanelprobe, "--check"})`.
class VirtualBoard {
public:
    /// What the operator presses.
    VirtualBoard& keys(const std::string& steps) { return option("--keys", steps); }
    /// Takes a device away.
    VirtualBoard& without(const std::string& device) { return option("--without", device); }
    VirtualBoard& font(const std::string& path) { return option("--font", path); }
    VirtualBoard& screen(const std::string& behaviour) { return option("--screen", behaviour); }
    VirtualBoard& timeout(const std::string& seconds) { return option("--timeout", seconds); }
    VirtualBoard& option(const std::string& name) {
        options_.push_back(name);
        return *this;
    }
    VirtualBoard& option(const std::string& name, const std::string& value) {
        return option(name).option(value);
    }
    VirtualBoard& traced() {
        traced_ = true;
        return *this;
    }
    /// As an ordinary user, on whose machine /dev/fuse is open to everybody.
    VirtualBoard& asUser() {
        asUser_ = true;
        return *this;
    }
    VirtualBoard& in(const std::string& directory) {
        directory_ = directory;
        return *this;
    }

    BoardRun run(const std::vector<std::string>& command) const;

private:
    std::vector<std::string> options_;
    std::string directory_;
    bool traced_ = false;
    bool asUser_ = false;
};

inline VirtualBoard board() {
    return {};
}

}  // namespace support
