#pragma once

#include <arpa/inet.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>

#include "Vl/Common/Strings/ByteOrder.h"

namespace Valen {

/// Builds a message in a growing byte buffer. InputStream reads it back.
///
/// Integers are written most significant byte first, booleans as one byte, strings with a one-byte length.
/// The stream owns its buffer, which doubles when a value does not fit; there is no allocation while it does.
/// Its capacity never exceeds INT_MAX: growing beyond, like an allocation that fails, throws std::bad_alloc
/// and leaves the old buffer in place. A null text or null bytes count as empty. Move-only; a stream that was
/// moved from is empty, has no capacity and may be used again. Not thread-safe.
class OutputStream {
public:
    /// With a capacity of 15000 bytes.
    OutputStream();
    /// A negative capacity counts as 0.
    explicit OutputStream(int capacity);
    OutputStream(OutputStream&& other) noexcept;
    OutputStream& operator=(OutputStream&& other) noexcept;
    ~OutputStream();

    void put(char value) { putValue(static_cast<std::uint8_t>(value)); }
    /// Writes the low eight bits.
    void putUInt8(int value) { putValue(static_cast<std::uint8_t>(value)); }
    void putUInt16(std::uint16_t value) { putValue(htons(value)); }
    void putUInt32(std::uint32_t value) { putValue(htonl(value)); }
    void putUInt64(std::uint64_t value) { putValue(htonll(value)); }
    /// Writes 1 or 0.
    void putBool(bool value) { putValue(static_cast<std::uint8_t>(value ? 1 : 0)); }
    /// Writes the length in one byte, then the characters. A longer text is cut to 255 characters; that is
    /// meant.
    void putString(const char* text) {
        const std::size_t length = text == nullptr ? 0 : strnlen(text, UINT8_MAX);
        char* const place = roomFor(1 + length);
        position_ = copyBytes(copyTo(place, static_cast<std::uint8_t>(length)), text, length);
    }

    /// The same without a look at the room left: ensureBufferSpace() has reserved it before.
    void unsafePutUInt8(int value) { append(static_cast<std::uint8_t>(value)); }
    void unsafePutUInt16(std::uint16_t value) { append(htons(value)); }
    void unsafePutUInt32(std::uint32_t value) { append(htonl(value)); }
    void unsafePutUInt64(std::uint64_t value) { append(htonll(value)); }

    /// Writes raw bytes, without length or terminator. They lie outside this stream.
    void write(const char* bytes, unsigned int size);
    OutputStream& operator<<(const std::string& text);
    OutputStream& operator<<(char value);
    /// Writes the characters without their terminator, but makes room for it too, which is meant: a text that
    /// just fits doubles the buffer.
    OutputStream& operator<<(const char* text);
    /// Writes what `other` holds; a stream may be written to itself.
    OutputStream& operator<<(const OutputStream& other);

    /// Makes room for `bytes` more, doubling the capacity as often as that takes.
    void ensureBufferSpace(unsigned int bytes) { roomFor(bytes); }
    /// Doubles the capacity (0 becomes 1). Contents and offset stay, the new bytes are zero.
    void DoubleBuffer();

    /// The start of the buffer; valid until the stream grows.
    char* GetRawData() { return buffer_.get(); }
    const char* GetRawData() const { return buffer_.get(); }
    char* GetData() { return buffer_.get(); }
    const char* GetData() const { return buffer_.get(); }
    /// The same, with the number of bytes written.
    const char* GetData(int& size) const;

    /// The number of bytes written: everything before the write position.
    int GetSize() const { return static_cast<int>(position_ - buffer_.get()); }
    /// The capacity in bytes.
    int GetAllocatedBytes() const { return static_cast<int>(end_ - buffer_.get()); }
    unsigned int GetOffset() const { return static_cast<unsigned int>(position_ - buffer_.get()); }
    /// Moves the write position, as a rule back, to patch a field. An offset beyond the capacity makes the
    /// buffer grow as a put does. What is skipped keeps its bytes, zero where nothing has been written.
    void SetOffset(unsigned int offset);
    /// The same. @return the offset before.
    unsigned int GetAndThenSetOffset(unsigned int offset);
    long tellp() const { return position_ - buffer_.get(); }
    /// SetOffset for a position as tellp() gives it; a negative one is the start.
    OutputStream& seekp(long position);

    /// Back to the start; capacity and bytes stay.
    void clear() { position_ = buffer_.get(); }
    /// Starts again with a buffer of this capacity.
    void Reset(unsigned int capacity);
    /// Replaces the contents by these bytes, which lie outside this stream.
    void SetData(const char* bytes, unsigned int size);
    /// The bytes written.
    std::string str() const { return {buffer_.get(), position_}; }
    /// Replaces the contents.
    void str(const std::string& contents);
    /// Whether the stream has failed: never, failures are exceptions.
    bool operator!() const { return false; }

    /// Replaces `text` by the bytes written in readable form: printable characters as they are, a backslash
    /// doubled, any other byte as \xNN. With `asHexDump` it is the text of toHexString() instead.
    void StreamToHumanString(std::string& text, bool asHexDump = false) const;
    /// Adds a hex dump of the first `mostBytes` bytes written to `text`: 32 bytes a line, each line with its
    /// offset.
    void toHexString(std::stringstream& text, int mostBytes = INT_MAX) const;

private:
    friend class InputStream;

    template <typename Value>
    void append(Value value) {
        position_ = copyTo(position_, value);
    }
    template <typename Value>
    void putValue(Value value) {
        position_ = copyTo(roomFor(sizeof value), value);
    }
    template <typename Value>
    static char* copyTo(char* place, Value value) {
        std::memcpy(place, &value, sizeof value);
        return place + sizeof value;
    }
    static char* copyBytes(char* place, const char* bytes, std::size_t size) {
        if (size != 0) {
            std::memcpy(place, bytes, size);
        }
        return place + size;
    }
    /// The write position, with room for `bytes` behind it. Handed from call to call it stays in a register,
    /// where a member would be read again after every byte written.
    char* roomFor(std::size_t bytes) {
        char* const place = position_;
        if (static_cast<std::size_t>(end_ - place) < bytes) [[unlikely]] {
            return grow(bytes);
        }
        return place;
    }
    char* grow(std::size_t bytes);
    void reallocate(std::size_t capacity);

    char* position_;
    std::unique_ptr<char[]> buffer_;
    char* end_;
};

}  // namespace Valen
