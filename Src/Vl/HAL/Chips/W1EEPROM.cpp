#include "Vl/HAL/Chips/W1EEPROM.h"

#include <algorithm>
#include <chrono>

#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Bus/Pause.h"

namespace Valen::HAL {
namespace {

constexpr std::chrono::milliseconds kBetweenReads(10);

constexpr int kCrcSize = 2;
constexpr int kSerialOffset = 0;
constexpr int kVersionOffset = kSerialOffset + kCrcSize + static_cast<int>(sizeof(HaldenSerial));
constexpr int kIdentitySize = kVersionOffset + kCrcSize + static_cast<int>(sizeof(Version));

/// A record that begins with so many zeros was never written.
constexpr std::size_t kBlankSize = 8;

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

}  // namespace

std::string W1EEPROM::eepromFile = "/eeprom";

W1EEPROM::W1EEPROM(W1Util::W1Handle handle, int retries) : handle_(handle), retries_(retries) {}

W1EEPROM::W1EEPROM(const void* buffer, int size, W1Util::W1Handle handle, const Version& version)
    : W1EEPROM(handle) {
    version_ = version;
    const auto* bytes = static_cast<const std::byte*>(buffer);
    cache_.assign(bytes, bytes + std::max(size, 0));
}

bool W1EEPROM::findDevice(int match, int bus, W1Util::Family family) {
    vlslist<W1Util::W1Handle> slaves;
    W1Util::FindW1(slaves, family, bus);
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

std::string W1EEPROM::path() const {
    return W1Util::filePath(handle_, eepromFile);
}

}  // namespace Valen::HAL
