#pragma once

#include <cstdint>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/FileIn.h"

/// Records of a file that a checksum protects, as the cards' EEPROMs hold them: at some offset the CRC-16 of
/// the data (see CRC16, start value 0; big-endian, two bytes), then the data. How long the data are only the
/// reader and the writer know. The CRC is computed as the data pass through Read and Write.
///
/// One thread uses an object at a time. Calls block as read(2) and write(2) do and go on when a signal
/// interrupts them. Nothing is logged.
namespace Valen::ProtectedFile {

/// Reads a record.
class In : public File::In {
public:
    /// Opens the file and stands before the first byte of the data of the record at `offset`.
    In(const char* path, long offset);
    ~In() override;

    /// Whether the file is open and holds at least the two bytes of a CRC at the record's offset.
    bool isValid() const override;

    /// Goes back to the beginning of the data: forgets the CRC of what was read and reads the stored one
    /// anew.
    /// @return false when that cannot be read; the file is closed then.
    bool rewind();
    /// Reads up to `size` bytes.
    /// @return their number, less than `size` at the file's end; -1 on an error, with errno set. What was
    ///         read before an error counts for crc() and position().
    int Read(void* data, int size);
    /// How many bytes of the data have been read; negative when the file cannot tell.
    long position() const;

    std::uint16_t crc() const { return crc_; }
    std::uint16_t storedCrc() const { return storedCrc_; }

private:
    long offset_;
    std::uint16_t crc_ = 0;
    std::uint16_t storedCrc_ = 0;
};

/// Writes a record: construct, Write the data, finish(). Until finish() the record bears the CRC 0, so that a
/// record whose writing was cut short is not taken for a whole one (unless its data have that very CRC).
class Out {
public:
    /// Creates or truncates the file (readable and writable for its owner only) and stands before the first
    /// byte of the data of a record at `offset`. Truncating has no effect on an EEPROM's file in sysfs.
    Out(const char* path, long offset);

    /// Whether the file is open.
    bool isValid() const { return descriptor_.get() >= 1; }

    /// Writes `size` bytes.
    /// @return their number, less than `size` when the file takes no more; -1 on an error, with errno set.
    int Write(const void* data, int size);
    /// Writes the CRC of what was written and closes the file. @return whether both went well.
    bool finish();

private:
    Descriptor descriptor_;
    long offset_;
    std::uint16_t crc_ = 0;
};

}  // namespace Valen::ProtectedFile
