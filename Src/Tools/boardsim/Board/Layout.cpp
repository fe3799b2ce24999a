#include "Tools/boardsim/Board/Layout.h"

namespace boardsim {
namespace {

void appendBigEndian(std::string& bytes, std::uint32_t value, unsigned width) {
    for (unsigned shift = 8 * width; shift > 0; shift -= 8) {
        bytes += static_cast<char>(value >> (shift - 8) & 0xFF);
    }
}

}  // namespace

std::string encodeLayout(std::span<const Core> cores) {
    std::string bytes;
    for (const Core& core : cores) {
        bytes += core.name;
        bytes += '\0';
        appendBigEndian(bytes, static_cast<std::uint32_t>(1 + core.addresses.size()), 2);
        appendBigEndian(bytes, core.version, 4);
        for (const std::uint32_t address : core.addresses) {
            appendBigEndian(bytes, address, 4);
        }
    }
    return bytes;
}

}  // namespace boardsim
