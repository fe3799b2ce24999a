#include "Vl/Graphics/Images/OverlayContainer.h"

#include <algorithm>
#include <array>
#include <limits>

#include "Vl/Graphics/Images/BigEndian.h"

namespace Overlay {
namespace {

constexpr uint32_t kMarker = 0xffffffff;
constexpr int64_t kBodyUnit = 128;
constexpr int64_t kWordBytes = 4;
constexpr int64_t kLongestBody = std::numeric_limits<uint32_t>::max() * kWordBytes;

}  // namespace

Result seek(FILE* file, int64_t offset) {
    if (const Result flushed = flush(file); flushed != Ok) {
        return flushed;
    }
    return fseeko(file, offset, SEEK_SET) == 0 ? Ok : SeekFailed;
}

Result write(FILE* file, std::span<const uint8_t> bytes) {
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() ? Ok : WriteFailed;
}

Result flush(FILE* file) {
    return std::fflush(file) == 0 ? Ok : WriteFailed;
}

Result beginBody(FILE* file) {
    return file != nullptr ? seek(file, kBodyOffset) : NoFile;
}

Result finish(FILE* file, unsigned long id, int64_t bodyBytes) {
    constexpr std::array<uint8_t, kBodyUnit> zeroes{};
    const int64_t padding = (kBodyUnit - bodyBytes % kBodyUnit) % kBodyUnit;
    const int64_t paddedBytes = bodyBytes + padding;
    if (paddedBytes > kLongestBody) {
        return TooLarge;
    }
    if (const Result padded = write(file, std::span(zeroes).first(static_cast<size_t>(padding)));
        padded != Ok) {
        return padded;
    }
    if (const Result atStart = seek(file, 0); atStart != Ok) {
        return atStart;
    }
    const std::array<uint32_t, 3> header = {bigEndian(kMarker), bigEndian(static_cast<uint32_t>(id)),
                                            bigEndian(static_cast<uint32_t>(paddedBytes / kWordBytes))};
    if (const Result written = write(file, bytesOf(header)); written != Ok) {
        return written;
    }
    return flush(file);
}

Result finishAtEnd(FILE* file, unsigned long id) {
    if (fseeko(file, 0, SEEK_END) != 0) {
        return SeekFailed;
    }
    const int64_t end = ftello(file);
    return end >= 0 ? finish(file, id, std::max<int64_t>(end - kBodyOffset, 0)) : SeekFailed;
}

}  // namespace Overlay
