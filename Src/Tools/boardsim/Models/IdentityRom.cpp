#include "Tools/boardsim/Models/IdentityRom.h"

namespace boardsim {
namespace {

bool happens(std::optional<FaultSchedule>& fault) {
    return fault && fault->strikes();
}

/// Several bytes become half of them.
std::size_t halfOf(std::size_t count, std::optional<FaultSchedule>& fault) {
    return count > 1 && happens(fault) ? count / 2 : count;
}

}  // namespace

IdentityRom::IdentityRom(std::span<const std::uint8_t> contents) : memory_(kBytes, std::byte{0xFF}) {
    const auto fitting = std::as_bytes(contents.first(std::min(contents.size(), kBytes)));
    std::copy(fitting.begin(), fitting.end(), memory_.begin());
}

FileAnswer IdentityRom::read(std::uint64_t offset, std::span<std::byte> into) {
    if (happens(faults_.failures)) {
        return {0, std::errc::io_error};
    }
    const std::size_t there = bytesBefore(kBytes, offset, into.size());
    const std::size_t count = halfOf(there, faults_.shortReads);
    readContents(memory_, offset, into.first(count));
    if (faults_.corrupt >= offset && faults_.corrupt - offset < count && happens(faults_.corruption)) {
        into[faults_.corrupt - static_cast<std::size_t>(offset)] ^= std::byte{0xFF};
    }
    return {count};
}

FileAnswer IdentityRom::write(std::uint64_t offset, std::span<const std::byte> bytes) {
    if (happens(faults_.failures)) {
        return {0, std::errc::io_error};
    }
    const std::size_t there = bytesBefore(kBytes, offset, bytes.size());
    if (there == 0 && !bytes.empty()) {
        return {0, std::errc::no_space_on_device};
    }
    const std::size_t count = halfOf(there, faults_.shortWrites);
    std::copy_n(bytes.begin(), count, memory_.begin() + static_cast<std::ptrdiff_t>(offset));
    return {count};
}

}  // namespace boardsim
