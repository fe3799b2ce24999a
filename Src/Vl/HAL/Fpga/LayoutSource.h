#pragma once

#include <endian.h>

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string_view>

/// What core layouts are read from: a stream, or bytes at hand. Both offer the same operations, of which each
/// reads on from where the one before has ended:
///   nextName(name)      the text up to a zero byte or the end, valid until called again; false at the end
///   read(number)        a big-endian number; false where the layout ends before it does
///   skipWords(words)    passes over words of 32 bits
///   move(words)         the same, or back; whether that could be done
namespace Valen::HAL {

inline constexpr long kLayoutWord = 4;

/// The number of 16 or 32 bits at `bytes`, which need no alignment.
template <std::unsigned_integral Unsigned>
Unsigned fromBigEndian(const void* bytes) {
    Unsigned value;
    std::memcpy(&value, bytes, sizeof value);
    if constexpr (sizeof value == sizeof(std::uint16_t)) {
        return be16toh(value);
    } else {
        return be32toh(value);
    }
}

/// A layout that stdio reads. Does not own the stream.
class LayoutStream {
public:
    explicit LayoutStream(FILE* layout) : layout_(layout), canSeek_(std::ftell(layout) >= 0) {}
    LayoutStream(const LayoutStream&) = delete;
    LayoutStream& operator=(const LayoutStream&) = delete;
    ~LayoutStream() { std::free(name_); }

    bool nextName(std::string_view& name) {
        if (getdelim(&name_, &capacity_, '\0', layout_) < 0) {
            return false;
        }
        name = name_;
        return true;
    }

    template <std::unsigned_integral Unsigned>
    bool read(Unsigned& number) {
        std::array<std::byte, sizeof(Unsigned)> bytes;
        if (std::fread(bytes.data(), bytes.size(), 1, layout_) != 1) {
            return false;
        }
        number = fromBigEndian<Unsigned>(bytes.data());
        return true;
    }

    bool move(long words) { return seek(words * kLayoutWord); }

    /// Most cores have few words, which stdio has at hand already: reading them there saves the system call
    /// that every seek is. What cannot be read is left to a seek after all, and so is every layout that
    /// cannot seek, to the same result as if each had been one.
    bool skipWords(std::uint16_t words) {
        std::array<std::byte, 16 * kLayoutWord> passed;
        const std::size_t size = words * std::size_t{kLayoutWord};
        if (!canSeek_ || size > passed.size()) {
            return move(words);
        }
        const std::size_t count = std::fread(passed.data(), 1, size, layout_);
        return count == size || seek(static_cast<long>(size - count));
    }

private:
    bool seek(long bytes) { return std::fseek(layout_, bytes, SEEK_CUR) == 0; }

    FILE* layout_;
    bool canSeek_;
    // getdelim's buffer, which it grows as names need.
    std::size_t capacity_ = 64;
    char* name_ = static_cast<char*>(std::malloc(capacity_));
};

/// A layout in memory. As in a file, one may move behind its end.
class LayoutMemory {
public:
    explicit LayoutMemory(std::span<const std::byte> layout)
        : layout_(reinterpret_cast<const char*>(layout.data()), layout.size()) {}

    bool nextName(std::string_view& name) {
        if (position_ >= layout_.size()) {
            return false;
        }
        const std::string_view rest = layout_.substr(position_);
        name = rest.substr(0, rest.find('\0'));
        position_ += name.size() + 1;
        return true;
    }

    template <std::unsigned_integral Unsigned>
    bool read(Unsigned& number) {
        if (position_ + sizeof(Unsigned) > layout_.size()) {
            return false;
        }
        number = fromBigEndian<Unsigned>(layout_.data() + position_);
        position_ += sizeof(Unsigned);
        return true;
    }

    bool move(long words) {
        const long target = static_cast<long>(position_) + words * kLayoutWord;
        if (target < 0) {
            return false;
        }
        position_ = static_cast<std::size_t>(target);
        return true;
    }

    bool skipWords(std::uint16_t words) { return move(words); }

private:
    std::string_view layout_;
    std::size_t position_ = 0;
};

}  // namespace Valen::HAL
