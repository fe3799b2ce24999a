#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/Support/FileFaults.h"
#include "Tests/Support/PrivateNetwork.h"
#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Identity/JenkinsChecksum.h"
#include "Vl/HAL/Board/CPLinkInterface.h"

/// A network with the interface "pattern", at whose far end everything is received; and a pattern file.
/// Sleeps take no time.
class PatternWorld : public BoardWorld {
protected:
    static constexpr const char* kFile = "/tmp/test.pattern";

    PatternWorld();

    /// A file of `size` bytes whose header tells `words` words of payload, with different bytes everywhere.
    static std::string patternOf(std::size_t size, std::uint32_t words);
    /// The same with the right header for whole words.
    static std::string patternOf(std::size_t size);
    /// `bytes` as frames of 1024 bytes, the last one shorter.
    static std::vector<std::string> framesOf(const std::string& bytes);

    /// Writes the file and sends it.
    int send(const std::string& bytes, bool corrupt = false);
    /// Puts a frame of `size` bytes on the interface beside the link's.
    static void sendOther(std::size_t size);
    /// What arrived at the far end.
    std::vector<std::string> received() const;
    /// What the interface's counter says.
    static unsigned long transmitted();

    /// What the log has of a file that was sent well.
    static support::LogLine sent(long bytes) {
        return debug("Firmware: Total bytes sent: " + std::to_string(bytes));
    }
    static support::LogLine service(const std::string& text) {
        return {kServiceLog, kInfo, "Firmware: SendPattern(): " + text};
    }

    support::PrivateNetwork network;
    support::FileFaults files{kFile};
    Valen::CPLinkInterface link;
    Valen::JenkinsChecksum checksum;

private:
    static constexpr int kServiceLog = 16;

    Valen::Descriptor farEnd_;
};
