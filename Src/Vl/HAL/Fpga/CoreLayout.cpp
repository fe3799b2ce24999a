#include "Vl/HAL/Fpga/CoreLayout.h"

#include <fcntl.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Fpga/LayoutSource.h"

namespace Valen::HAL {
namespace {

enum Result : int {
    Found = 1,
    WrongVersion = -4,
    NotFound = -5,
    BeyondRecord = -7,
    NoLayout = -8,
};

/// More than the layouts of today's boards need; one that is longer takes more reads.
constexpr std::size_t kUsualSize = 8192;

/// A wanted name, taken apart at its first '*', the only one that counts.
class NamePattern {
public:
    explicit NamePattern(std::string_view text)
        : hasStar_(text.find('*') != std::string_view::npos),
          begin_(text.substr(0, text.find('*'))),
          end_(hasStar_ ? text.substr(begin_.size() + 1) : std::string_view()) {}

    bool matches(std::string_view name) const { return hasStar_ ? matchesAroundStar(name) : name == begin_; }

private:
    bool matchesAroundStar(std::string_view name) const;

    bool hasStar_;
    std::string_view begin_;
    std::string_view end_;
};

bool NamePattern::matchesAroundStar(std::string_view name) const {
    return name.size() >= begin_.size() + end_.size() && name.starts_with(begin_) && name.ends_with(end_);
}

bool isWithin(int version, int minimum, int maximum) {
    return (minimum < 0 || version >= minimum) && (maximum < 0 || version <= maximum);
}

/// Moves `layout` to the version word of the first core whose name matches.
/// @return false when the layout ends before it; else with the number of the core's words.
template <typename Source>
bool findCore(Source& layout, const NamePattern& pattern, std::uint16_t& words) {
    for (std::string_view name; layout.nextName(name);) {
        if (!layout.read(words)) {
            return false;
        }
        if (pattern.matches(name)) {
            return true;
        }
        if (!layout.skipWords(words)) {
            // Twice the number of words, not the bytes to skip: meant.
            VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: short read skip info: %d", words * 2);
            return false;
        }
    }
    return false;
}

/// Reads words n to n+count-1 of a core whose version word has just been read.
template <typename Source>
bool readWords(Source& layout, unsigned int* out, int n, int count) {
    if (!layout.move(n - 1L)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        if (!layout.read(out[i])) {
            return false;
        }
    }
    return true;
}

template <typename Source>
int readCore(Source layout, const char* name, unsigned int* out, int n, int count, int minVersion,
             int maxVersion) {
    std::uint16_t words = 0;
    if (!findCore(layout, NamePattern(name), words)) {
        return NotFound;
    }
    std::uint32_t versionWord = 0;
    if (!layout.read(versionWord)) {
        VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: short read version");
        return NotFound;
    }
    const int version = static_cast<int>(versionWord);
    if (!isWithin(version, minVersion, maxVersion)) {
        VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: version check failed: %X <= %X <= %X",
               static_cast<unsigned int>(minVersion), versionWord, static_cast<unsigned int>(maxVersion));
        return WrongVersion;
    }
    if (static_cast<long>(n) + count > words) {
        // The text says >= where the test says >: meant.
        VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: n+count > words (%d+%d >= %d)", n, count, words);
        return BeyondRecord;
    }
    if (!readWords(layout, out, n, count)) {
        VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: short read info");
        return NotFound;
    }
    return Found;
}

/// All that can be read of a file, from its beginning. A driver's file does not tell how long it is.
std::vector<std::byte> readAll(const Descriptor& file) {
    std::vector<std::byte> bytes(kUsualSize);
    std::size_t size = 0;
    while (true) {
        const ssize_t count = readExact(file.get(), std::span(bytes).subspan(size));
        size += count > 0 ? static_cast<std::size_t>(count) : 0;
        if (size < bytes.size()) {
            bytes.resize(size);
            return bytes;
        }
        bytes.resize(2 * size);
    }
}

}  // namespace

std::optional<std::vector<std::byte>> readLayout(const char* device) {
    const std::string path = std::string("/sys/bus/avalon/devices/") + device + "/layout";
    const Descriptor file = Descriptor::open(path.c_str(), O_RDONLY);
    if (!file.isValid()) {
        VL_LOG(CPCardInterface, ERROR, "could not find: %s", path.c_str());
        return std::nullopt;
    }
    return readAll(file);
}

int getPldCoreInfo(FILE* layout, const char* name, unsigned int* out, int n, int count, int minVersion,
                   int maxVersion) {
    return readCore(LayoutStream(layout), name, out, n, count, minVersion, maxVersion);
}

int getPldCoreInfo(std::span<const std::byte> layout, const char* name, unsigned int* out, int n, int count,
                   int minVersion, int maxVersion) {
    return readCore(LayoutMemory(layout), name, out, n, count, minVersion, maxVersion);
}

int getPldCoreInfo(const char* device, const char* name, unsigned int* out, int n, int minVersion,
                   int maxVersion) {
    const auto layout = readLayout(device);
    return layout ? getPldCoreInfo(*layout, name, out, n, 1, minVersion, maxVersion) : NoLayout;
}

int getPldCoreAddress(const char* device, const char* name, unsigned int* out, int n, int minVersion,
                      int maxVersion) {
    const int result = getPldCoreInfo(device, name, out, n, minVersion, maxVersion);
    *out &= kCoreAddressMask;  // on every path, a failed one too: meant
    return result;
}

long getPldCoreAddress(const char* device, const char* name, int n, int minVersion, int maxVersion) {
    unsigned int address = 0;
    const int result = getPldCoreAddress(device, name, &address, n, minVersion, maxVersion);
    return result == Found ? static_cast<long>(address) : -1;
}

}  // namespace Valen::HAL
