#pragma once

#include <string>
#include <string_view>

namespace boardsim {

/// Turns one datagram that a program sent to "/dev/log" into a line for people, without a line end:
/// "<134>Nov 21 07:51:00 tool: text" becomes "local0.info tool: text".
///
/// The priority becomes the names of facility and level; a datagram without a valid one counts as
/// user.notice, as RFC 3164 section 4.3.3 has it. The C library's time stamp is left out. Line ends at the
/// end are dropped; other control bytes become "#" and three octal digits, so that one datagram stays one
/// line. Bytes of 128 and more pass unchanged, whatever their encoding.
std::string readableSyslogLine(std::string_view datagram);

}  // namespace boardsim
