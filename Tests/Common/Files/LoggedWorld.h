#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/Support/SyslogReceiver.h"
#include "Vl/Common/Files/Descriptor.h"

/// A private world with an open log that admits everything up to DEBUG. /tmp is empty, without the entries of
/// the machine that a PrivateWorld lets through: what is written or deleted here cannot reach them. The
/// working directory comes back at the end.
class LoggedWorld : public testing::Test {
protected:
    LoggedWorld();
    ~LoggedWorld() override;

    /// What the log received since the last call.
    std::vector<support::LogLine> logged() { return syslog_.lines(); }
    static void admitOnlyService();

    /// Puts an empty file system of its own on `directory`, which is created.
    static void mountEmpty(const std::string& directory, const char* options = nullptr,
                           unsigned long flags = 0);

    support::PrivateWorld world;

private:
    support::SyslogReceiver syslog_;
    Valen::Descriptor workingDirectory_;
};

/// How many descriptors this process has open.
std::size_t openDescriptors();

/// Lines of the component "Firmware" as the system log receives them.
support::LogLine errorLine(const std::string& text);
support::LogLine noticeLine(const std::string& text);
support::LogLine serviceLine(const std::string& text);
support::LogLine debugLine(const std::string& text);

/// Runs `check` in a child process, whose restrictions end with it. @return whether `check` held.
bool holdsInChild(const std::function<bool()>& check);
/// The calling process may no longer do what only a privileged one may.
void dropCapabilities();
/// These system calls now fail in the calling process, with `error`.
void denySystemCalls(std::initializer_list<long> numbers, int error);

/// What a command line writes to standard output, without the last newline.
std::string outputOf(const std::string& command);
