#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "Vl/Common/Files/ProtectedFile.h"
#include "Vl/Common/Identity/HaldenSerial.h"
#include "Vl/Common/Identity/Version.h"
#include "Vl/HAL/Bus/W1Util.h"

namespace Valen::HAL {

/// What production writes into a card.
struct W1ProdData {
    HaldenSerial serial;
    Version version;
};

/// A 1-Wire EEPROM with a card's identity, read and written through the kernel's "eeprom" file of the slave.
///
/// It holds protected records (see ProtectedFile): the card's HaldenSerial at offset 0, right behind it (18)
/// its Version; what lies behind only its writers know. Contacts are poor and the kernel caches what it read,
/// so short reads are continued, and a record whose CRC is wrong makes the kernel forget its copy.
///
/// Nothing is owned but memory: every operation opens the file anew. One thread uses an object at a time.
/// Operations block for the transfers and the pauses named with them. Failures are logged (origin
/// CPCardInterface) and returned.
class W1EEPROM {
public:
    static constexpr int kAnyCardType = -1;

    /// The slaves' file with their contents, as W1Util::filePath takes it. Change it only before threads use
    /// it.
    static std::string eepromFile;

    explicit W1EEPROM(W1Util::W1Handle handle = {}, int retries = 10);
    /// An EEPROM that was read before: takes over a copy of `size` bytes at `buffer` and the version.
    W1EEPROM(const void* buffer, int size, W1Util::W1Handle handle, const Version& version);

    W1Util::W1Handle handle() const { return handle_; }
    /// The version of the device that match() accepted last.
    const Version& version() const { return version_; }
    /// The data of the identity records that match() accepted last: 16 bytes of serial, 12 of version.
    std::span<const std::byte> cached() const { return cache_; }

    /// Takes the first EEPROM of that family that the bus lists (see W1Util::FindW1) and match() accepts.
    /// @return whether there is one; without, the handle stays.
    bool findDevice(int match, int bus, W1Util::Family family = W1Util::kIdentityEeprom);
    /// Reads a slave's identity records, each as often as the retry count allows. It is accepted when both
    /// have the right CRC and are not blank, and the version's card type is `cardType`, or that is negative.
    /// Then version() and cached() are this slave's. The handle stays.
    bool match(const W1Util::W1Handle& handle, int cardType);

    /// Reads the first `size` bytes of a record. A read that ends short is continued after 10 ms, ten times
    /// at most.
    /// @param path where the kernel's copy is to be forgotten (see clearCache) when the CRC is wrong.
    /// @param checkCrc `size` is the whole record, and its CRC must be right.
    /// @return whether all was read, and rightly so.
    bool faultTolerantRead(const char* path, void* buf, int size, ProtectedFile::In& in, bool checkCrc) const;

    /// Writes a record and reads it back, until both agree, but ten times at most, 50 ms apart. @return
    /// whether they did. Without, the record is broken or the old one.
    bool WriteEEPROMPart(const void* data, int size, int offset);

    /// Reads the serial, `retries` times at most, 10 ms after each failure. @return whether there is one that
    /// is not blank; without, `serial` stays.
    bool ReadHaldenSerial(HaldenSerial& serial, int retries) const;
    /// As WriteEEPROMPart.
    bool WriteHaldenSerial(const HaldenSerial& serial);
    /// Writes the serial's record to any file, without reading it back. @return whether all was written.
    static bool GWriteHaldenSerial(const W1ProdData& data, const char* path);

    /// Forgets cached() and lets the kernel forget its copy.
    void clearCache();
    /// Lets the kernel forget what it knows of an EEPROM, by writing a 0 over the file's last byte.
    static void clearCache(const char* path);

private:
    std::string path() const;
    bool writeAndReadBack(std::span<const std::byte> data, int offset) const;
    bool readRecord(const char* path, int offset, std::span<std::byte> record, int retries) const;

    W1Util::W1Handle handle_;
    Version version_{};
    std::vector<std::byte> cache_;
    int retries_ = 0;
};

}  // namespace Valen::HAL
