#include "Vl/HAL/Chips/W1EEPROM.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <string_view>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Bus/Pause.h"

namespace Valen::HAL {
namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenReads = 10ms;
constexpr auto kBetweenWrites = 50ms;
constexpr int kMoreReads = 10;
constexpr int kWrites = 10;

constexpr int kCrcSize = 2;
constexpr int kSerialOffset = 0;
constexpr int kVersionOffset = kSerialOffset + kCrcSize + static_cast<int>(sizeof(HaldenSerial));
constexpr int kIdentitySize = kVersionOffset + kCrcSize + static_cast<int>(sizeof(Version));

/// A record that begins with so many zeros was never written.
constexpr std::size_t kBlankSize = 8;

using Words = std::array<unsigned int, 4>;

/// The first four words, as far as there are so many: what the log shows of data.
Words firstWords(std::span<const std::byte> data) {
    Words words{};
    std::memcpy(words.data(), data.data(), std::min(data.size(), sizeof words));
    return words;
}

bool isBlank(std::span<const std::byte> record) {
    const auto begin = record.first(std::min(record.size(), kBlankSize));
    return std::all_of(begin.begin(), begin.end(), [](std::byte byte) { return byte == std::byte{}; });
}

template <typename Record>
std::span<const std::byte> bytesOf(const Record& record) {
    return std::as_bytes(std::span(&record, 1));
}

template <typename Record>
std::span<std::byte> writableBytesOf(Record& record) {
    return std::as_writable_bytes(std::span(&record, 1));
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

std::string W1EEPROM::eepromFile = "/eeprom";

W1EEPROM::W1EEPROM(W1Util::W1Handle handle, int retries) : handle_(handle), retries_(retries) {}

W1EEPROM::W1EEPROM(const void* buffer, int size, W1Util::W1Handle handle, const Version& version)
    : W1EEPROM(handle) {
    version_ = version;
    const auto* bytes = static_cast<const std::byte*>(buffer);
    cache_.assign(bytes, bytes + sizeOf(size));
}

bool W1EEPROM::findDevice(int match, int bus) {
    vlslist<W1Util::W1Handle> slaves;
    W1Util::FindW1(slaves, W1Util::kIdentityEeprom, bus);
    for (const W1Util::W1Handle slave : slaves) {
        if (this->match(slave, match)) {
            handle_ = slave;
            return true;
        }
    }
    return false;
}

bool W1EEPROM::match(const W1Util::W1Handle& handle, int cardType) {
    const std::string path = W1Util::filePath(handle, eepromFile);
    const std::int64_t size = DirUtil::FileSize(path.c_str());
    if (size < 0) {
        VL_LOG(CPCardInterface, DEBUG, "cannot open %s ", path.c_str());
        return false;
    }
    if (size < kIdentitySize) {
        VL_LOG(CPCardInterface, DEBUG, "impossible len: %d (orig: %d)", static_cast<int>(size),
               kIdentitySize);
        return false;
    }
    W1ProdData identity;
    if (!readRecord(path.c_str(), kSerialOffset, writableBytesOf(identity.serial), retries_) ||
        !readRecord(path.c_str(), kVersionOffset, writableBytesOf(identity.version), retries_)) {
        VL_LOG(CPCardInterface, DEBUG, "reading w1 eeprom %llX failed!",
               static_cast<unsigned long long>(handle.value));
        return false;
    }
    const unsigned int found = identity.version.cardType();
    if (cardType >= 0 && found != static_cast<unsigned int>(cardType)) {
        VL_LOG(CPCardInterface, DEBUG, "tried to match %lX %X != %X", handle.value,
               static_cast<unsigned int>(cardType), found);
        return false;
    }
    version_ = identity.version;
    const auto serial = bytesOf(identity.serial);
    const auto version = bytesOf(identity.version);
    cache_.assign(serial.begin(), serial.end());
    cache_.insert(cache_.end(), version.begin(), version.end());
    return true;
}

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
    ProtectedFile::Out out(file.c_str(), offset);
    if (out.Write(data.data(), size) == size) {
        out.finish();
    }
    // What counts is what can be read, whatever the writing said.
    ProtectedFile::In in(file.c_str(), offset);
    std::vector<std::byte> copy(data.size());
    return faultTolerantRead(file.c_str(), copy.data(), size, in, true) &&
           std::equal(data.begin(), data.end(), copy.begin());
}

bool W1EEPROM::ReadHaldenSerial(HaldenSerial& serial, int retries) const {
    HaldenSerial record;
    if (!readRecord(path().c_str(), kSerialOffset, writableBytesOf(record), retries)) {
        return false;
    }
    serial = record;
    return true;
}

bool W1EEPROM::readRecord(const char* path, int offset, std::span<std::byte> record, int retries) const {
    ProtectedFile::In in(path, offset);
    bool failed = false;
    for (int attempt = 0; attempt < retries; ++attempt) {
        if (failed) {
            pauseFor(kBetweenReads);
        }
        failed = !faultTolerantRead(path, record.data(), static_cast<int>(record.size()), in, true);
        if (!failed && !isBlank(record)) {
            return true;
        }
    }
    return false;
}

bool W1EEPROM::WriteHaldenSerial(const HaldenSerial& serial) {
    return WriteEEPROMPart(&serial, sizeof serial, kSerialOffset);
}

bool W1EEPROM::GWriteHaldenSerial(const W1ProdData& data, const char* path) {
    constexpr int kSize = sizeof data.serial;
    ProtectedFile::Out out(path, kSerialOffset);
    return out.Write(&data.serial, kSize) == kSize && out.finish();
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

std::string W1EEPROM::path() const {
    return W1Util::filePath(handle_, eepromFile);
}

}  // namespace Valen::HAL
