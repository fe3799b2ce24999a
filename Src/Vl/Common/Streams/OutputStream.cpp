#include "Vl/Common/Streams/OutputStream.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "Vl/Common/Streams/ReadableBytes.h"
#include "Vl/Common/Strings/HexDump.h"

namespace Valen {
namespace {

constexpr int kDefaultCapacity = 15000;
constexpr std::size_t kMostCapacity = std::numeric_limits<int>::max();

/// Nothing doubles to something, so that growing comes to an end.
constexpr std::size_t doubled(std::size_t capacity) {
    return std::max<std::size_t>(1, 2 * capacity);
}

/// Zero-filled, with one spare byte.
std::unique_ptr<char[]> allocate(std::size_t capacity) {
    if (capacity > kMostCapacity) {
        throw std::bad_array_new_length();
    }
    return std::make_unique<char[]>(capacity + 1);
}

}  // namespace

OutputStream::OutputStream() : OutputStream(kDefaultCapacity) {}

OutputStream::OutputStream(int capacity)
    : position_(nullptr),
      buffer_(allocate(static_cast<std::size_t>(std::max(capacity, 0)))),
      end_(buffer_.get() + std::max(capacity, 0)) {
    clear();
}

OutputStream::OutputStream(OutputStream&& other) noexcept
    : position_(std::exchange(other.position_, nullptr)),
      buffer_(std::move(other.buffer_)),
      end_(std::exchange(other.end_, nullptr)) {}

OutputStream& OutputStream::operator=(OutputStream&& other) noexcept {
    OutputStream taken(std::move(other));
    std::swap(position_, taken.position_);
    std::swap(buffer_, taken.buffer_);
    std::swap(end_, taken.end_);
    return *this;
}

OutputStream::~OutputStream() = default;

void OutputStream::write(const char* bytes, unsigned int size) {
    if (bytes != nullptr) {
        position_ = copyBytes(roomFor(size), bytes, size);
    }
}

OutputStream& OutputStream::operator<<(const std::string& text) {
    position_ = copyBytes(roomFor(text.size()), text.data(), text.size());
    return *this;
}

OutputStream& OutputStream::operator<<(char value) {
    put(value);
    return *this;
}

OutputStream& OutputStream::operator<<(const char* text) {
    const std::size_t length = text == nullptr ? 0 : std::strlen(text);
    position_ = copyBytes(roomFor(length + 1), text, length);
    return *this;
}

OutputStream& OutputStream::operator<<(const OutputStream& other) {
    const auto size = static_cast<std::size_t>(other.GetSize());
    char* const place = roomFor(size);
    // Only now: growing moves the bytes when the other stream is this one.
    position_ = copyBytes(place, other.buffer_.get(), size);
    return *this;
}

void OutputStream::DoubleBuffer() {
    reallocate(doubled(static_cast<std::size_t>(GetAllocatedBytes())));
}

const char* OutputStream::GetData(int& size) const {
    size = GetSize();
    return buffer_.get();
}

void OutputStream::SetOffset(unsigned int offset) {
    const auto capacity = static_cast<unsigned int>(GetAllocatedBytes());
    if (offset > capacity) {
        grow(offset - GetOffset());
    }
    position_ = buffer_.get() + offset;
}

unsigned int OutputStream::GetAndThenSetOffset(unsigned int offset) {
    const unsigned int before = GetOffset();
    SetOffset(offset);
    return before;
}

OutputStream& OutputStream::seekp(long position) {
    SetOffset(static_cast<unsigned int>(std::clamp<long>(position, 0, UINT_MAX)));
    return *this;
}

void OutputStream::Reset(unsigned int capacity) {
    buffer_ = allocate(capacity);
    end_ = buffer_.get() + capacity;
    clear();
}

void OutputStream::SetData(const char* bytes, unsigned int size) {
    clear();
    write(bytes, size);
}

void OutputStream::str(const std::string& contents) {
    clear();
    *this << contents;
}

void OutputStream::StreamToHumanString(std::string& text, bool asHexDump) const {
    text = asHexDump ? hexDump({buffer_.get(), position_}) : readableBytes({buffer_.get(), position_});
}

void OutputStream::toHexString(std::stringstream& text, int mostBytes) const {
    Valen::toHexString(text, buffer_.get(), std::clamp(mostBytes, 0, GetSize()));
}

char* OutputStream::grow(std::size_t bytes) {
    if (bytes > kMostCapacity) {
        throw std::bad_array_new_length();
    }
    const std::size_t needed = GetOffset() + bytes;
    auto capacity = static_cast<std::size_t>(GetAllocatedBytes());
    while (capacity < needed) {
        capacity = doubled(capacity);
    }
    reallocate(capacity);
    return position_;
}

void OutputStream::reallocate(std::size_t capacity) {
    std::unique_ptr<char[]> larger = allocate(capacity);
    const std::ptrdiff_t offset = position_ - buffer_.get();
    std::copy_n(buffer_.get(), GetAllocatedBytes(), larger.get());
    buffer_ = std::move(larger);
    position_ = buffer_.get() + offset;
    end_ = buffer_.get() + capacity;
}

}  // namespace Valen
