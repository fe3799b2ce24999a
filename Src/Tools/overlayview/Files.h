#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Tools/overlayview/Bytes.h"

namespace overlayview {

/// No file may be larger: an 8K pattern has 66,355,212 bytes.
constexpr std::size_t kMostFileBytes = std::size_t{1} << 26;

/// The whole file, FIFOs included. Blocks until it has ended.
/// @throws std::system_error naming the file when it cannot be read, with EFBIG when it is too large.
std::vector<std::byte> readFile(const std::string& path);

/// Replaces the file, "-" is standard output.
/// @throws std::system_error naming the file when it cannot be written whole.
void writeFile(const std::string& path, Bytes bytes);

}  // namespace overlayview
