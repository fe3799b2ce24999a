#include "Vl/HAL/Board/PatternFile.h"

#include <fcntl.h>

#include "Vl/Common/Files/ExactIO.h"

namespace Valen {
namespace {

constexpr std::size_t kWordSize = sizeof(unsigned int);
static_assert(kWordSize == 4 && sizeof(long) == 8, "the largest length in bytes fits");

// Word indices.
constexpr std::size_t kLength = 2;
constexpr std::size_t kFirstData = PatternFile::kHeaderSize / kWordSize;

}  // namespace

PatternFile::PatternFile(const char* path, bool corrupt)
    : file_(Descriptor::open(path, O_RDONLY)), corrupt_(corrupt) {}

bool PatternFile::next() {
    const bool isFirst = bytesRead_ == 0;
    const ssize_t count = readExact(file_.get(), std::as_writable_bytes(std::span(buffer_)));
    chunkSize_ = count > 0 ? static_cast<std::size_t>(count) : 0;
    bytesRead_ += static_cast<long>(chunkSize_);
    if (isFirst) {
        readHeader();
    }
    return chunkSize_ > 0;
}

std::span<const std::byte> PatternFile::bytes() const {
    return std::as_bytes(std::span(buffer_)).first(chunkSize_);
}

std::span<const unsigned int> PatternFile::words() const {
    return std::span(buffer_).first((chunkSize_ + kWordSize - 1) / kWordSize);
}

void PatternFile::readHeader() {
    payloadExpected_ = static_cast<long>(buffer_[kLength]) * static_cast<long>(kWordSize);
    if (corrupt_) {
        buffer_[kFirstData] ^= 1;
    }
}

}  // namespace Valen
