#pragma once

#include <string>
#include <string_view>

namespace Valen {

/// Bytes as a line of text: printable ASCII characters as they are, a backslash doubled, any other byte as
/// \xNN.
std::string readableBytes(std::string_view bytes);

/// Bytes as a hex dump of 32 bytes a line, each line with its offset.
std::string hexDump(std::string_view bytes);

}  // namespace Valen
