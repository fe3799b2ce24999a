#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace boardsim {

/// Bytes as the trace writes them, each with a blank before it: " 0x31 0x0a".
std::string hexBytes(std::span<const std::byte> bytes);

}  // namespace boardsim
