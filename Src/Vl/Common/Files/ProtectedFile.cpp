#include "Vl/Common/Files/ProtectedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <span>
#include <string_view>

#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Identity/CRC16.h"

namespace Valen::ProtectedFile {
namespace {

constexpr mode_t kOwnerOnly = 0600;
constexpr long kCrcSize = 2;

bool seek(int descriptor, long offset) {
    return lseek(descriptor, offset, SEEK_SET) >= 0;
}

/// Moves `size` bytes with `transfer(bytes, count)`, which is read(2) or write(2), through the CRC.
template <typename Byte, typename Transfer>
int moveThrough(std::uint16_t& crc, Byte* bytes, int size, Transfer transfer) {
    int moved = 0;
    while (moved < size) {
        const ssize_t count = transfer(bytes + moved, static_cast<std::size_t>(size - moved));
        if (count > 0) {
            crc = static_cast<std::uint16_t>(CRC16::CalcCRC(bytes + moved, static_cast<int>(count), crc));
            moved += static_cast<int>(count);
        } else if (count == 0) {
            break;
        } else if (errno != EINTR) {
            return -1;
        }
    }
    return moved;
}

bool writeCrc(int descriptor, std::uint16_t crc) {
    const std::array bytes{static_cast<char>(crc >> 8), static_cast<char>(crc & 0xFF)};
    return writeExact(descriptor, std::string_view(bytes.data(), bytes.size()));
}

}  // namespace

In::In(const char* path, long offset) : File::In(path), offset_(offset) {
    rewind();
}

In::~In() = default;

bool In::isValid() const {
    struct stat status {};
    // No seek to the end: the position stays where Read left it.
    return File::In::isValid() && fstat(descriptor(), &status) == 0 && status.st_size >= kCrcSize &&
           offset_ <= status.st_size - kCrcSize;
}

bool In::rewind() {
    crc_ = 0;
    std::array<std::byte, kCrcSize> bytes{};
    if (!seek(descriptor(), offset_) || readExact(descriptor(), bytes) != kCrcSize) {
        close();
        return false;
    }
    storedCrc_ = static_cast<std::uint16_t>(std::to_integer<unsigned int>(bytes[0]) << 8 |
                                            std::to_integer<unsigned int>(bytes[1]));
    return true;
}

int In::Read(void* data, int size) {
    return moveThrough(
        crc_, static_cast<std::byte*>(data), size,
        [this](std::byte* bytes, std::size_t count) { return ::read(descriptor(), bytes, count); });
}

long In::position() const {
    return lseek(descriptor(), 0, SEEK_CUR) - kCrcSize - offset_;
}

Out::Out(const char* path, long offset)
    : descriptor_(::open(path, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, kOwnerOnly)),  // NOLINT: variadic
      offset_(offset) {
    if (!seek(descriptor_.get(), offset) || !writeCrc(descriptor_.get(), 0)) {
        descriptor_ = Descriptor();
    }
}

int Out::Write(const void* data, int size) {
    return moveThrough(crc_, static_cast<const std::byte*>(data), size,
                       [this](const std::byte* bytes, std::size_t count) {
                           return ::write(descriptor_.get(), bytes, count);
                       });
}

bool Out::finish() {
    const bool written = seek(descriptor_.get(), offset_) && writeCrc(descriptor_.get(), crc_);
    return descriptor_.close() == 0 && written;
}

}  // namespace Valen::ProtectedFile
