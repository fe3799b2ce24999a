#include "Tools/boardsim/Host/RegisterFile.h"

#include <algorithm>

namespace boardsim {
namespace {

std::size_t countFrom(const ByteRegisters& registers, std::uint64_t offset, std::size_t wanted) {
    return offset < registers.count ? std::min<std::size_t>(wanted, registers.count - offset) : 0;
}

}  // namespace

FileCalls registerFile(const ByteRegisters& registers) {
    FileCalls calls;
    calls.read = [registers](std::uint64_t offset, std::span<std::byte> into) -> Transfer {
        const std::size_t count = countFrom(registers, offset, into.size());
        for (std::size_t i = 0; i < count; ++i) {
            into[i] = std::byte{registers.get(offset + i)};
        }
        return {count};
    };
    calls.write = [registers](std::uint64_t offset, std::span<const std::byte> bytes) -> Transfer {
        const std::size_t count = countFrom(registers, offset, bytes.size());
        if (count == 0 && !bytes.empty()) {
            return {0, std::errc::file_too_large};
        }
        for (std::size_t i = 0; i < count; ++i) {
            registers.set(offset + i, std::to_integer<std::uint8_t>(bytes[i]));
        }
        return {count};
    };
    return calls;
}

}  // namespace boardsim
