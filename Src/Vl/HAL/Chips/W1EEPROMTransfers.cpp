// How bytes get into and out of the EEPROM: again and again, until they are right.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Bus/Pause.h"
#include "Vl/HAL/Chips/W1EEPROM.h"

namespace Valen::HAL {
namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenReads = 10ms;
constexpr auto kBetweenWrites = 50ms;
constexpr int kMoreReads = 10;
constexpr int kWrites = 10;

using Words = std::array<unsigned int, 4>;

/// The first four words, as far as there are so many: what the log shows of data.
Words firstWords(std::span<const std::byte> data) {
    Words words{};
    const auto bytes = std::as_writable_bytes(std::span(words));
    std::copy_n(data.begin(), std::min(data.size(), bytes.size()), bytes.begin());
    return words;
}

/// The size of a caller's buffer.
std::size_t sizeOf(int size) {
    return static_cast<std::size_t>(std::max(size, 0));
}

/// The file's position says where a read stopped, also one that ended with an error.
bool readWithPauses(ProtectedFile::In& in, std::span<std::byte> buffer) {
    long done = 0;
    for (int more = 0; more <= kMoreReads; ++more) {
        if (more > 0) {
            pauseFor(kBetweenReads);
        }
        const auto rest = buffer.subspan(static_cast<std::size_t>(done));
        in.Read(rest.data(), static_cast<int>(rest.size()));
        done = in.position();
        if (done < 0) {
            return false;
        }
        if (static_cast<std::size_t>(done) == buffer.size()) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool W1EEPROM::faultTolerantRead(const char* path, void* buf, int size, ProtectedFile::In& in,
                                 bool checkCrc) const {
    const std::span buffer(static_cast<std::byte*>(buf), sizeOf(size));
    if (!in.isValid() || !in.rewind() || !readWithPauses(in, buffer)) {
        return false;
    }
    if (!checkCrc || in.crc() == in.storedCrc()) {
        return true;
    }
    clearCache(path);
    const Words words = firstWords(buffer);
    VL_LOG(CPCardInterface, DEBUG, "w1 crc failed exp: %X, calc: %X: %d bytes: %08X %08X %08X %08X",
           static_cast<unsigned int>(in.storedCrc()), static_cast<unsigned int>(in.crc()), size, words[0],
           words[1], words[2], words[3]);
    return false;
}

bool W1EEPROM::WriteEEPROMPart(const void* data, int size, int offset) {
    const std::span record(static_cast<const std::byte*>(data), sizeOf(size));
    cache_.clear();
    for (int attempt = 0; attempt < kWrites; ++attempt) {
        if (attempt > 0) {
            pauseFor(kBetweenWrites);
        }
        if (writeAndReadBack(record, offset)) {
            return true;
        }
        const Words words = firstWords(record);
        VL_LOG(CPCardInterface, ERROR, "readback failed: %08X %08X %08X %08X", words[0], words[1], words[2],
               words[3]);
    }
    VL_LOG(CPCardInterface, ERROR, "writing w1 eeprom @ %X failed!", static_cast<unsigned int>(offset));
    return false;
}

bool W1EEPROM::writeAndReadBack(std::span<const std::byte> data, int offset) const {
    const std::string file = path();
    const int size = static_cast<int>(data.size());
    if (ProtectedFile::Out out(file.c_str(), offset); out.Write(data.data(), size) == size) {
        out.finish();
    }
    // What counts is what can be read, whatever the writing said.
    ProtectedFile::In in(file.c_str(), offset);
    std::vector<std::byte> copy(data.size());
    return faultTolerantRead(file.c_str(), copy.data(), size, in, true) &&
           std::equal(data.begin(), data.end(), copy.begin());
}

void W1EEPROM::clearCache() {
    cache_.clear();
    clearCache(path().c_str());
}

void W1EEPROM::clearCache(const char* path) {
    const Descriptor file = Descriptor::open(path, O_RDWR);
    if (lseek(file.get(), -1, SEEK_END) >= 0) {
        writeExact(file.get(), std::string_view("\0", 1));
    }
}

}  // namespace Valen::HAL
