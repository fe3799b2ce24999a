#pragma once

#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace e2e {

/// A place on the board that is hard on a program.
struct Place {
    const char* name;
    const char* makeIt;     ///< the shell commands that make it
    bool hasOutput = true;  ///< whether standard output leads to the test
};
inline std::ostream& operator<<(std::ostream& out, const Place& place) {
    return out << place.name;
}

inline constexpr auto kHostilePlaces = std::to_array<Place>({
    {"ThirtyTwoDescriptors", "ulimit -n 32"},
    {"FullTmp", "mount -o remount,size=1m /tmp && ! cat /dev/zero > /tmp/all 2>/dev/null"},
    {"ReadOnlyLogDirectory", "mkdir -p /opt/fw/log && mount -t tmpfs -o ro none /opt/fw/log"},
    {"NoEnvironment", "unset $(env | cut -d = -f 1)"},
    {"ClosedOutput", "exec >&-", false},
    {"EverythingClosed", "exec <&- >&- 2>&-", false},
    {"FullOutput", "exec > /dev/full", false},
    {"ReaderGoneAndSigpipeIgnored",
     "trap '' PIPE && mkfifo /tmp/pipe && exec 3<>/tmp/pipe 4>/tmp/pipe 3>&- >&4 4>&-", false},
});

/// Where the reader of standard output is gone, writing ends a program with status 141.
inline constexpr Place kReaderGone = {
    "ReaderGone", "mkfifo /tmp/pipe && exec 3<>/tmp/pipe 4>/tmp/pipe 3>&- >&4 4>&-", false};

/// The command in that place, for a board to run.
inline std::vector<std::string> at(const Place& place, const std::vector<std::string>& command) {
    std::vector<std::string> words = {"/bin/sh", "-c", std::string(place.makeIt) + " && exec \"$@\"", "sh"};
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

}  // namespace e2e
