#pragma once

#include <gmock/gmock.h>

#include <string>
#include <string_view>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/Support/SyslogReceiver.h"
#include "Vl/Common/Log/SeverityLevel.h"

/// A board's outside world, empty at first, with the process's log open. What the code under test logs is
/// read with syslog.lines().
class BoardWorld : public testing::Test {
protected:
    // The lines' facility and level: errors go to local1, debug messages to local2.
    static constexpr int kUserLog = 17;
    static constexpr int kDebugLog = 18;
    static constexpr int kError = 3;
    static constexpr int kInfo = 6;

    BoardWorld();
    ~BoardWorld() override;

    static support::LogLine error(const std::string& text) { return {kUserLog, kError, text}; }
    static support::LogLine debug(const std::string& text) { return {kDebugLog, kInfo, text}; }

    /// Lets everything into the log.
    static void logEverything();
    /// Lets messages up to `severity` into the log.
    static void logUpTo(Valen::Log::SeverityLevel::SeverityLevel_T severity);

    /// Writes the layout file of a device.
    static void writeLayout(const std::string& device, std::string_view bytes);

    /// How many descriptors of this process are open on `path`.
    static int descriptorsOn(const std::string& path);

    support::PrivateWorld world;
    support::SyslogReceiver syslog;
};
