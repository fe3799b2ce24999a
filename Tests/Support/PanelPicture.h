#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// An 8-bit RGB picture, row by row.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb;
};

/// What an operator sees of a frame: 160 × 48 pixels of big-endian RGB 5-6-5 on a panel that is mounted
/// upside down.
Picture asOperatorSees(std::string_view frame);

Picture readPng(const std::string& path);
void writePng(const std::string& path, const Picture& picture);

/// Fails the test where `picture` differs from the golden PNG, leaving "<name>.actual.png" and
/// "<name>.difference.png" in the working directory. With VALEN_UPDATE_GOLDEN set in the environment the
/// golden PNG is written instead.
void expectLooksLike(const std::string& goldenPath, const Picture& picture);

}  // namespace support
