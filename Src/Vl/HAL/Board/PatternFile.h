#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "Vl/Common/Files/Descriptor.h"

namespace Valen {

/// A file of test pattern, read in chunks as they are sent.
///
///     0   8   not looked at here
///     8   4   length of the payload in 32-bit words
///    12   …   payload
///
/// Words are in the machine's byte order. Not thread-safe.
class PatternFile {
public:
    static constexpr std::size_t kHeaderSize = 12;
    static constexpr std::size_t kChunkSize = 1024;

    /// @param corrupt flips the lowest bit of the payload's first word as it is read.
    PatternFile(const char* path, bool corrupt);

    bool isOpen() const { return file_.isValid(); }
    void close() { file_.close(); }

    /// Reads the next chunk; only the last one is shorter than kChunkSize. @return false at the end of the
    /// file, and when it cannot be read on.
    bool next();

    /// The chunk that was read last.
    std::span<const std::byte> bytes() const;
    /// The same, up to the end of a word begun: behind the file's end follows what was in the buffer before,
    /// zeros or the chunk before.
    std::span<const unsigned int> words() const;

    /// Bytes read so far, header included.
    long bytesRead() const { return bytesRead_; }
    /// The same without the header: negative as long as there is less.
    long payloadRead() const { return bytesRead_ - static_cast<long>(kHeaderSize); }
    /// The payload's size in bytes as the header tells it; 0 before the first chunk.
    long payloadExpected() const { return payloadExpected_; }

private:
    using Buffer = std::array<unsigned int, kChunkSize / sizeof(unsigned int)>;

    void readHeader();

    Descriptor file_;
    bool corrupt_;
    Buffer buffer_{};
    std::size_t chunkSize_ = 0;
    long bytesRead_ = 0;
    long payloadExpected_ = 0;
};

}  // namespace Valen
