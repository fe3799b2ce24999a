#include "Vl/Common/Streams/InputStream.h"

#include <algorithm>
#include <utility>

#include "Vl/Common/Streams/OutputStream.h"
#include "Vl/Common/Streams/ReadableBytes.h"
#include "Vl/Common/Strings/HexDump.h"

namespace Valen {
namespace {

std::unique_ptr<char[]> allocate(long size) {
    return std::make_unique<char[]>(static_cast<std::size_t>(size));
}

}  // namespace

InputStream::InputStream(const char* bytes, unsigned long size) {
    const long count = bytes == nullptr ? 0 : static_cast<long>(size);
    adopt(allocate(count), count, count);
    std::copy_n(bytes, count, data_.get());
}

InputStream::InputStream(int bufferSize) {
    setBufferSize(bufferSize);
}

InputStream::InputStream(const OutputStream& written)
    : InputStream(written.GetData(), static_cast<unsigned long>(written.GetSize())) {}

InputStream::InputStream(OutputStream&& written) {
    OutputStream taken(std::move(written));
    const long size = taken.GetSize();
    const long bufferSize = taken.GetAllocatedBytes();
    adopt(std::move(taken.buffer_), bufferSize, size);
}

InputStream::InputStream(InputStream&& other) noexcept
    : data_(std::move(other.data_)),
      bufferSize_(std::exchange(other.bufferSize_, 0)),
      size_(std::exchange(other.size_, 0)),
      position_(std::exchange(other.position_, 0)) {}

InputStream& InputStream::operator=(InputStream&& other) noexcept {
    InputStream taken(std::move(other));
    std::swap(data_, taken.data_);
    std::swap(bufferSize_, taken.bufferSize_);
    std::swap(size_, taken.size_);
    std::swap(position_, taken.position_);
    return *this;
}

InputStream::~InputStream() = default;

void InputStream::init(const char* bytes, int size) {
    const long count = bytes == nullptr ? 0 : std::max(size, 0);
    if (count > bufferSize_) {
        *this = InputStream(bytes, static_cast<unsigned long>(count));
        return;
    }
    std::copy_n(bytes, count, data_.get());
    size_ = count;
    position_ = 0;
}

char* InputStream::getBuffer(int size) {
    const long count = std::max(size, 0);
    if (count > bufferSize_) {
        adopt(allocate(count), count, count);
    }
    size_ = count;
    position_ = 0;
    return data_.get();
}

void InputStream::setBufferSize(int size) {
    const long count = std::max(size, 0);
    const long kept = std::min(size_, count);
    const long position = std::min(position_, kept);
    std::unique_ptr<char[]> data = allocate(count);
    std::copy_n(data_.get(), kept, data.get());
    adopt(std::move(data), count, kept);
    position_ = position;
}

void InputStream::truncate(long size) {
    size_ = std::clamp<long>(size, 0, size_);
    position_ = std::min(position_, size_);
}

void InputStream::clear() {
    size_ = 0;
    position_ = 0;
}

SimpleString InputStream::getString() {
    const int length = getUInt8();
    SimpleString::NoCopyBuffer text(length + 1);
    if (!text.isValid()) {
        seekg(length, std::ios_base::cur);
        return SimpleString(std::move(text));
    }
    const long found = read(text.get(), length);
    std::fill(text.get() + found, text.get() + length + 1, '\0');
    return SimpleString(std::move(text));
}

long InputStream::read(void* target, long size) {
    const long count = std::clamp<long>(GetRemainingSize(), 0, std::max(size, 0L));
    std::copy_n(GetRemainingData(), count, static_cast<char*>(target));
    position_ += count;
    return count;
}

bool InputStream::getline(char* text, long size, char delimiter) {
    if (size <= 0) {
        return false;
    }
    const std::string_view left = remaining();
    // A delimiter right behind the last character that fits still ends this line.
    const std::size_t length = left.substr(0, static_cast<std::size_t>(size)).find(delimiter);
    const bool delimited = length != std::string_view::npos;
    const std::string_view line = left.substr(0, delimited ? length : static_cast<std::size_t>(size - 1));
    *std::copy(line.begin(), line.end(), text) = '\0';
    position_ += static_cast<long>(line.size()) + (delimited ? 1 : 0);
    return delimited || (!line.empty() && line.size() == left.size());
}

bool InputStream::getline(std::string& text, char delimiter) {
    const std::string_view left = remaining();
    text = left.substr(0, left.find(delimiter));
    position_ += static_cast<long>(std::min(text.size() + 1, left.size()));
    return !left.empty();
}

long InputStream::find(char value) const {
    const std::size_t place = remaining().find(value);
    return place == std::string_view::npos ? -1 : static_cast<long>(place);
}

int InputStream::peek() const {
    return eof() ? -1 : static_cast<unsigned char>(data_[static_cast<std::size_t>(position_)]);
}

InputStream& InputStream::unget() {
    position_ = std::max(position_ - 1, 0L);
    return *this;
}

InputStream& InputStream::seekg(long offset, std::ios_base::seekdir origin) {
    long base = 0;
    if (origin == std::ios_base::cur) {
        base = position_;
    } else if (origin == std::ios_base::end) {
        base = size_;
    }
    position_ = base + std::clamp(offset, -base, size_ - base);
    return *this;
}

const char* InputStream::GetRemainingData() const {
    return data_.get() + std::min(position_, size_);
}

const char* InputStream::GetData(long& size) const {
    size = size_;
    return data_.get();
}

void InputStream::StreamToHumanString(std::string& text, bool asHexDump) const {
    const std::string_view bytes(data_.get(), static_cast<std::size_t>(size_));
    text = asHexDump ? hexDump(bytes) : readableBytes(bytes);
}

void InputStream::toHexString(std::stringstream& text, int mostBytes) const {
    Valen::toHexString(text, data_.get(), static_cast<int>(std::clamp<long>(mostBytes, 0, size_)));
}

/// What is there of the value comes first in memory, as in a value that is there whole.
void InputStream::takePastEnd(void* value, long size) {
    const std::string_view left = remaining();
    std::copy(left.begin(), left.end(), static_cast<char*>(value));
    position_ += size;
}

std::string_view InputStream::remaining() const {
    return {GetRemainingData(), static_cast<std::size_t>(std::max(GetRemainingSize(), 0L))};
}

void InputStream::adopt(std::unique_ptr<char[]> data, long bufferSize, long size) {
    data_ = std::move(data);
    bufferSize_ = bufferSize;
    size_ = size;
    position_ = 0;
}

}  // namespace Valen
