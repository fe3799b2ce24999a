#include "Tools/boardsim/Models/W1Eeprom.h"

#include <algorithm>

namespace boardsim {
namespace {

constexpr std::size_t kPage = W1EepromMemory::kPageBytes;
constexpr std::size_t kRow = W1EepromMemory::kRowBytes;
constexpr std::byte kFlippedBit{0x10};

}  // namespace

FileAnswer W1Eeprom::read(std::uint64_t offset, std::span<std::byte> into) {
    if (offset >= kBytes || into.empty()) {
        return {};
    }
    const auto begin = static_cast<std::size_t>(offset);
    const FileAnswer admitted = admit(bytesBefore(kBytes, offset, into.size()), &W1Faults::shortReads);
    if (admitted.refused() || admitted.count == 0) {
        return admitted;
    }
    for (std::size_t page = begin / kPage; page * kPage < begin + admitted.count; ++page) {
        fetchPage(page);
    }
    return readContents(cache_, offset, into.first(admitted.count));
}

void W1Eeprom::fetchPage(std::size_t page) {
    if (cached_.test(page)) {
        return;
    }
    const auto begin = static_cast<std::ptrdiff_t>(page * kPage);
    std::copy_n(memory_.bytes().begin() + begin, kPage, cache_.begin() + begin);
    if (happens(&W1Faults::crcErrors)) {
        cache_[page * kPage] ^= kFlippedBit;
    }
    cached_.set(page);
}

FileAnswer W1Eeprom::write(std::uint64_t offset, std::span<const std::byte> bytes) {
    if (offset >= kBytes) {
        return {0, std::errc::file_too_large};
    }
    const auto begin = static_cast<std::size_t>(offset);
    const FileAnswer admitted = admit(bytesBefore(kBytes, offset, bytes.size()), &W1Faults::shortWrites);
    if (admitted.refused()) {
        return admitted;
    }
    cached_.reset();
    bytes = bytes.first(admitted.count);
    const bool isTorn = tears_ && tears_->which.strikes() && tears_->bytes < bytes.size();
    const bool isProgrammed = program(begin, isTorn ? bytes.first(tears_->bytes) : bytes);
    return isProgrammed && !isTorn ? admitted : FileAnswer{0, std::errc::io_error};
}

/// By rows. @return false when the chip refused one; the rows before are programmed.
bool W1Eeprom::program(std::size_t offset, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const std::size_t number = offset / kRow;
        const std::size_t within = offset % kRow;
        const std::size_t count = std::min(bytes.size(), kRow - within);
        W1EepromMemory::Row row{};
        std::copy_n(memory_.bytes().begin() + static_cast<std::ptrdiff_t>(number * kRow), kRow, row.begin());
        std::copy_n(bytes.begin(), count, row.begin() + static_cast<std::ptrdiff_t>(within));
        if (!memory_.program(number, row)) {
            return false;
        }
        offset += count;
        bytes = bytes.subspan(count);
    }
    return true;
}

void W1Eeprom::preset(std::size_t offset, std::span<const std::byte> bytes) {
    program(offset, bytes);
    cached_.reset();
}

std::vector<W1File> W1Eeprom::files() {
    return {
        {"eeprom", kBytes,
         [this](std::uint64_t offset, std::span<std::byte> into) { return read(offset, into); },
         [this](std::uint64_t offset, std::span<const std::byte> bytes) { return write(offset, bytes); }}};
}

}  // namespace boardsim
