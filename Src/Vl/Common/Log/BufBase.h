#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Valen::Log {

/// A fixed text buffer in which a message is built without heap allocation and without printf.
/// It holds 511 characters at most. What does not fit is cut from the right, and every operation leaves the
/// text zero-terminated. format() (TypedFormat.h) builds a whole message.
/// Not thread-safe.
///
/// `at` is always a position inside this buffer, begin() or what an earlier operation returned. Every
/// operation returns the position behind the last character that it wrote.
class BufBase {
public:
    /// How a number is written: a minimum width from 0 to 65535, combined with any of the bits below. Other
    /// bits have no meaning.
    enum NumberFlags : int {
        WidthMask = 0xFFFF,
        Hexadecimal = 0x10000,
        UpperCase = 0x20000,  ///< of hexadecimal digits
        ZeroFill = 0x40000,   ///< up to the width, instead of with blanks
    };

    /// Where process() writes.
    using ProcessParam = char*;

    struct Processed {
        const char* format;  ///< behind the placeholder; null when the format has ended or the buffer is full
        char* at;
    };

    /// Copies `text`, which must not be null.
    char* put(char* at, const char* text);

    char* putUInt64(char* at, std::uint64_t value, int flags);
    char* putULong(char* at, unsigned long value, int flags);
    /// A negative number is written as '-' and its magnitude, also in hexadecimal. The sign counts for the
    /// width and stands before zeros and behind blanks.
    char* putInt64(char* at, std::int64_t value, int flags);
    char* putLong(char* at, long value, int flags);

    /// Copies `format` up to its next placeholder, the two characters "%?". "%%" is copied as one '%', any
    /// other '%' as it is.
    Processed process(ProcessParam at, const char* format);

    char* begin() { return characters_.data(); }
    const char* text() const { return characters_.data(); }

private:
    char* last() { return characters_.data() + characters_.size() - 1; }
    std::size_t room(const char* at) { return static_cast<std::size_t>(last() - at); }
    char* fill(char* at, std::size_t count, char character);
    char* putNumber(char* at, bool isNegative, std::uint64_t magnitude, int flags);

    std::array<char, 512> characters_{};
};

}  // namespace Valen::Log
