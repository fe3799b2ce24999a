#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <span>
#include <string_view>

/// What core layouts are read from: a stream, or bytes at hand. Both offer the same operations, of which each
/// reads on from where the one before has ended:
///   nextName()          the text up to a zero byte or the end, valid until called again; nothing at the end
///   read<Unsigned>()    a big-endian number; nothing where the layout ends before it does
///   skipWords(words)    passes over words of 32 bits
///   move(words)         the same, or back; whether that could be done
namespace Valen::HAL {

inline constexpr long kLayoutWord = 4;

template <std::unsigned_integral Unsigned>
Unsigned fromBigEndian(std::span<const std::byte, sizeof(Unsigned)> bytes) {
    std::uint32_t value = 0;
    for (const std::byte byte : bytes) {
        value = value << 8 | std::to_integer<std::uint32_t>(byte);
    }
    return static_cast<Unsigned>(value);
}

/// A layout that stdio reads. Does not own the stream.
class LayoutStream {
public:
    explicit LayoutStream(FILE* layout) : layout_(layout), canSeek_(std::ftell(layout) >= 0) {}
    LayoutStream(const LayoutStream&) = delete;
    LayoutStream& operator=(const LayoutStream&) = delete;
    ~LayoutStream() { std::free(name_); }

    std::optional<std::string_view> nextName() {
        const ssize_t length = getdelim(&name_, &capacity_, '\0', layout_);
        return length >= 0 ? std::optional<std::string_view>(name_) : std::nullopt;
    }

    template <std::unsigned_integral Unsigned>
    std::optional<Unsigned> read() {
        std::array<std::byte, sizeof(Unsigned)> bytes;
        if (std::fread(bytes.data(), bytes.size(), 1, layout_) != 1) {
            return std::nullopt;
        }
        return fromBigEndian<Unsigned>(bytes);
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
    explicit LayoutMemory(std::span<const std::byte> layout) : layout_(layout) {}

    std::optional<std::string_view> nextName() {
        const std::string_view rest(reinterpret_cast<const char*>(layout_.data()) + at(),
                                    layout_.size() - at());
        if (rest.empty()) {
            return std::nullopt;
        }
        const std::string_view name = rest.substr(0, rest.find('\0'));
        position_ += name.size() + 1;
        return name;
    }

    template <std::unsigned_integral Unsigned>
    std::optional<Unsigned> read() {
        const std::span<const std::byte> rest = layout_.subspan(at());
        if (rest.size() < sizeof(Unsigned)) {
            return std::nullopt;
        }
        position_ += sizeof(Unsigned);
        return fromBigEndian<Unsigned>(rest.first<sizeof(Unsigned)>());
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
    std::size_t at() const { return position_ < layout_.size() ? position_ : layout_.size(); }

    std::span<const std::byte> layout_;
    std::size_t position_ = 0;
};

}  // namespace Valen::HAL
