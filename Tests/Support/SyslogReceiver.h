#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "Vl/Common/Files/Descriptor.h"

namespace support {

/// One line as a syslog daemon receives it: facility and level as in RFC 5424 (local0 is 16, error is 3), and
/// the message behind the time stamp and the program's name.
struct LogLine {
    int facility;
    int level;
    std::string text;

    bool operator==(const LogLine&) const = default;
};
std::ostream& operator<<(std::ostream& out, const LogLine& line);

/// The receiving end of "/dev/log" in a test's PrivateWorld. The kernel queues about ten lines; who logs more
/// waits until they are read, so call lines() in between.
class SyslogReceiver {
public:
    SyslogReceiver();
    ~SyslogReceiver();

    /// What has arrived since the last call, in order.
    std::vector<LogLine> lines();
    /// The same, but only the texts.
    std::vector<std::string> texts();

private:
    Valen::Descriptor socket_;
};

}  // namespace support
