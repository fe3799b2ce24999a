#include "Tests/Support/SyslogReceiver.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>

#include <array>
#include <cstdlib>
#include <ostream>
#include <string_view>

namespace support {
namespace {

constexpr std::string_view kTimeStamp = "Mmm dd hh:mm:ss ";

/// "<131>Nov  5 10:11:12 program: text"
LogLine parse(std::string_view datagram) {
    const int priority = std::atoi(datagram.data() + 1);
    const std::size_t tag = datagram.find('>') + 1 + kTimeStamp.size();
    const std::size_t text = datagram.find(": ", tag) + 2;
    return {priority / 8, priority % 8, std::string(datagram.substr(text))};
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const LogLine& line) {
    return out << '<' << line.facility << '.' << line.level << "> " << line.text;
}

SyslogReceiver::SyslogReceiver() : socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
    closelog();
    sockaddr_un address{AF_UNIX, "/dev/log"};
    EXPECT_EQ(0, bind(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
}

SyslogReceiver::~SyslogReceiver() {
    closelog();
}

std::vector<LogLine> SyslogReceiver::lines() {
    std::vector<LogLine> received;
    std::array<char, 8192> datagram;
    for (ssize_t size; (size = recv(socket_.get(), datagram.data(), datagram.size() - 1, 0)) >= 0;) {
        datagram[static_cast<std::size_t>(size)] = '\0';
        received.push_back(parse({datagram.data(), static_cast<std::size_t>(size)}));
    }
    return received;
}

std::vector<std::string> SyslogReceiver::texts() {
    std::vector<std::string> texts;
    for (const LogLine& line : lines()) {
        texts.push_back(line.text);
    }
    return texts;
}

}  // namespace support
