#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace support {

/// One test's own outside world. From construction to destruction /dev (but for the usual nodes), /opt, /tmp
/// and /sys/bus are empty (but for the way to the checkout and the working directory, should they lie there),
/// and what is created in them lives in memory and is gone afterwards. The program's main() (target
/// test_support) has entered a private mount namespace before, so nothing of the machine is touched.
class PrivateWorld {
public:
    PrivateWorld();
    PrivateWorld(const PrivateWorld&) = delete;
    PrivateWorld& operator=(const PrivateWorld&) = delete;
    ~PrivateWorld();

    /// Writes a file, creating the directories above it.
    static void write(const std::string& path, std::string_view bytes);
    /// The bytes of a file; fails the test when it cannot be read.
    static std::string read(const std::string& path);
    static void makeDirectory(const std::string& path);

private:
    std::vector<std::string> covered_;
};

}  // namespace support
