#include "Tools/boardsim/Host/SyslogLine.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace boardsim {
namespace {

// Names of facilities and levels by number: <sys/syslog.h>.
constexpr std::array<std::string_view, 24> kFacilities{
    "kern",   "user",   "mail",     "daemon", "auth",   "syslog",   "lpr",     "news",
    "uucp",   "cron",   "authpriv", "ftp",    "ntp",    "security", "console", "clock",
    "local0", "local1", "local2",   "local3", "local4", "local5",   "local6",  "local7"};
constexpr std::array<std::string_view, 8> kLevels{"emerg",   "alert",  "crit", "err",
                                                  "warning", "notice", "info", "debug"};
constexpr unsigned kUserNotice = 1 * 8 + 5;

/// Takes "<PRI>" off the front.
unsigned takePriority(std::string_view& rest) {
    if (!rest.starts_with('<')) {
        return kUserNotice;
    }
    unsigned priority = 0;
    const auto [end, error] = std::from_chars(rest.data() + 1, rest.data() + rest.size(), priority);
    if (error != std::errc{} || end == rest.data() + rest.size() || *end != '>' ||
        priority >= kFacilities.size() * kLevels.size()) {
        return kUserNotice;
    }
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()) + 1);
    return priority;
}

/// Takes "Mmm dd hh:mm:ss " off the front if it is there: letters, digits or blanks, and the rest as it
/// stands.
void dropTimestamp(std::string_view& rest) {
    constexpr std::string_view kShape = "AAA 99 99:99:99 ";
    if (rest.size() < kShape.size()) {
        return;
    }
    for (std::size_t i = 0; i < kShape.size(); ++i) {
        const char c = rest[i];
        const bool isDigit = c >= '0' && c <= '9';
        const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        const bool fits = kShape[i] == 'A'   ? isLetter
                          : kShape[i] == '9' ? isDigit || c == ' '
                                             : c == kShape[i];
        if (!fits) {
            return;
        }
    }
    rest.remove_prefix(kShape.size());
}

void appendVisibly(std::string& line, char c) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20 && code != 0x7F) {
        line += c;
        return;
    }
    line += '#';
    for (const unsigned shift : {6U, 3U, 0U}) {
        line += static_cast<char>('0' + (code >> shift & 7U));
    }
}

}  // namespace

std::string readableSyslogLine(std::string_view datagram) {
    const unsigned priority = takePriority(datagram);
    dropTimestamp(datagram);
    while (!datagram.empty() &&
           (datagram.back() == '\n' || datagram.back() == '\r' || datagram.back() == '\0')) {
        datagram.remove_suffix(1);
    }
    std::string line;
    line.append(kFacilities[priority / kLevels.size()])
        .append(".")
        .append(kLevels[priority % kLevels.size()])
        .append(" ");
    for (const char c : datagram) {
        appendVisibly(line, c);
    }
    return line;
}

}  // namespace boardsim
