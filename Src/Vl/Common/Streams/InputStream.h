#pragma once

#include <arpa/inet.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <ios>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "Vl/Common/Strings/ByteOrder.h"
#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {

class OutputStream;

/// Reads back what an OutputStream has written.
///
/// The stream owns its bytes: it copies them, takes them from an OutputStream, or offers a buffer to fill.
/// The getters do not report a read past the end: ask GetRemainingSize() or eof() first. Such a read is
/// harmless all the same: bytes behind the end read as 0, and the position advances as ever, so that the
/// remaining size turns negative. Negative sizes count as 0. Memory that runs out throws std::bad_alloc.
/// Move-only; a stream that was moved from is empty. Not thread-safe.
class InputStream {
public:
    InputStream() = default;
    /// Over a copy of these bytes; null counts as no bytes.
    InputStream(const char* bytes, unsigned long size);
    /// Empty, with a buffer of this many bytes; see getBuffer().
    explicit InputStream(int bufferSize);
    /// Over a copy of the bytes written.
    explicit InputStream(const OutputStream& written);
    /// Over the bytes written, which are taken without a copy.
    explicit InputStream(OutputStream&& written);
    InputStream(InputStream&& other) noexcept;
    InputStream& operator=(InputStream&& other) noexcept;
    ~InputStream();

    /// Starts again with a copy of these bytes, in the present buffer when they fit. Null counts as no bytes.
    void init(const char* bytes, int size);
    /// Starts again with a buffer for the caller to fill. @return the first of `size` bytes, all of which
    /// count as valid. They stay where they are until the next call that makes or takes another buffer.
    char* getBuffer(int size);
    /// Moves what fits of the valid bytes into a buffer of this size; the position stays, or is the new end.
    void setBufferSize(int size);
    /// Drops the valid bytes from `size` on; a position behind is moved to the new end.
    void truncate(long size);
    /// Drops all bytes, but keeps the buffer.
    void clear();
    /// Back to the start.
    void reset() { position_ = 0; }

    std::uint8_t getUInt8() { return take<std::uint8_t>(); }
    std::uint16_t getUInt16() { return ntohs(take<std::uint16_t>()); }
    std::uint32_t getUInt32() { return ntohl(take<std::uint32_t>()); }
    std::uint64_t getUInt64() { return ntohll(take<std::uint64_t>()); }
    std::int8_t getInt8() { return static_cast<std::int8_t>(getUInt8()); }
    std::int16_t getInt16() { return static_cast<std::int16_t>(getUInt16()); }
    std::int32_t getInt32() { return static_cast<std::int32_t>(getUInt32()); }
    std::int64_t getInt64() { return static_cast<std::int64_t>(getUInt64()); }
    /// Any byte other than 0 is true.
    bool getBool() { return getUInt8() != 0; }
    InputStream& get(char& value) {
        value = static_cast<char>(getUInt8());
        return *this;
    }
    /// A length byte and as many characters, but no more than there are; the missing ones are 0.
    SimpleString getString();
    /// Copies up to `size` bytes. @return how many there were; the rest of the target stays as it was.
    long read(void* target, long size);

    /// Reads to the next `delimiter`, which is taken but not stored, to the end, or until `size` - 1
    /// characters are stored, and ends the text with a zero. @return what std::istream::getline would say:
    /// false when nothing was taken, or when the line goes on behind the last character stored. The next
    /// call goes on there.
    bool getline(char* text, long size, char delimiter = '\n');
    /// The same without a limit. @return false when there was nothing to take.
    bool getline(std::string& text, char delimiter = '\n');
    /// The distance from the position to the next `value`; -1 when none is left. The position stays.
    long find(char value) const;

    /// The next byte (0 to 255), or -1 at the end. The position stays.
    int peek() const;
    /// One byte back, but not before the start.
    InputStream& unget();
    /// Whether nothing remains; unlike std::istream's, true before a read fails.
    bool eof() const { return position_ >= size_; }
    /// The read position; behind the end after a read past it.
    long tellg() const { return position_; }
    /// Moves the position; one outside the valid bytes becomes the start or the end.
    InputStream& seekg(long offset, std::ios_base::seekdir origin);
    InputStream& seekg(long position) { return seekg(position, std::ios_base::beg); }

    /// The bytes not read yet; GetRemainingSize() says how many, which is negative after a read past the end.
    /// Null while there is no buffer.
    const char* GetRemainingData() const;
    long GetRemainingSize() const { return size_ - position_; }
    /// All valid bytes. Null while there is no buffer.
    const char* GetData(long& size) const;
    long getSize() const { return size_; }
    long getBufferSize() const { return bufferSize_; }

    /// Replaces `text` by all valid bytes in readable form, as OutputStream does.
    void StreamToHumanString(std::string& text, bool asHexDump = false) const;
    /// Adds a hex dump of the first `mostBytes` valid bytes to `text`, as OutputStream does.
    void toHexString(std::stringstream& text, int mostBytes = INT_MAX) const;

private:
    template <typename Value>
    Value take() {
        Value value;
        if (size_ - position_ >= static_cast<long>(sizeof value)) [[likely]] {
            std::memcpy(&value, data_.get() + position_, sizeof value);
            position_ += static_cast<long>(sizeof value);
        } else {
            value = 0;
            takePastEnd(&value, sizeof value);
        }
        return value;
    }
    void takePastEnd(void* value, long size);
    std::string_view remaining() const;
    void adopt(std::unique_ptr<char[]> data, long bufferSize, long size);

    std::unique_ptr<char[]> data_;
    long bufferSize_ = 0;
    long size_ = 0;
    long position_ = 0;  // an offset: behind the end there is no place to point to
};

}  // namespace Valen
