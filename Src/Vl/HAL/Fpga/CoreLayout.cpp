#include "Vl/HAL/Fpga/CoreLayout.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "Vl/Common/Log/LogInterface.h"

namespace Valen::HAL {
namespace {

enum Result : int {
    Found = 1,
    WrongVersion = -4,
    NotFound = -5,
    BeyondRecord = -7,
    NoLayout = -8,
};

constexpr long kWordSize = 4;

/// The name buffer of getdelim, which grows it as names need.
class NameBuffer {
public:
    NameBuffer() = default;
    NameBuffer(const NameBuffer&) = delete;
    NameBuffer& operator=(const NameBuffer&) = delete;
    ~NameBuffer() { std::free(characters_); }

    bool readFrom(FILE* layout) { return getdelim(&characters_, &capacity_, '\0', layout) >= 0; }
    const char* get() const { return characters_; }

private:
    std::size_t capacity_ = 64;
    char* characters_ = static_cast<char*>(std::malloc(capacity_));
};

template <typename Unsigned>
std::optional<Unsigned> readBigEndian(FILE* layout) {
    std::array<unsigned char, sizeof(Unsigned)> bytes;
    if (std::fread(bytes.data(), bytes.size(), 1, layout) != 1) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (const unsigned char byte : bytes) {
        value = value << 8 | byte;
    }
    return static_cast<Unsigned>(value);
}

bool seek(FILE* layout, long bytes) {
    return std::fseek(layout, bytes, SEEK_CUR) == 0;
}

/// Passes over the words of a core. Most cores have few, which stdio has at hand already: reading them there
/// saves the system call that every seek is. What cannot be read is left to a seek after all, and so is every
/// layout that cannot seek, to the same result as if each had been one.
bool skipWords(FILE* layout, std::uint16_t words, bool canSeek) {
    std::array<std::byte, 16 * kWordSize> passed;
    const std::size_t size = words * std::size_t{kWordSize};
    if (!canSeek || size > passed.size()) {
        return seek(layout, static_cast<long>(size));
    }
    const std::size_t read = std::fread(passed.data(), 1, size, layout);
    return read == size || seek(layout, static_cast<long>(size - read));
}

/// Only the first '*' is one.
bool matches(std::string_view name, std::string_view pattern) {
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos) {
        return name == pattern;
    }
    return name.size() + 1 >= pattern.size() && name.starts_with(pattern.substr(0, star)) &&
           name.ends_with(pattern.substr(star + 1));
}

bool isWithin(int version, int minimum, int maximum) {
    return (minimum < 0 || version >= minimum) && (maximum < 0 || version <= maximum);
}

/// Moves `layout` to the version word of the first core whose name matches.
/// @return the number of the core's words; nothing when the layout ends before it.
std::optional<std::uint16_t> findCore(FILE* layout, const char* pattern) {
    const bool canSeek = std::ftell(layout) >= 0;
    for (NameBuffer name; name.readFrom(layout);) {
        const auto words = readBigEndian<std::uint16_t>(layout);
        if (!words || matches(name.get(), pattern)) {
            return words;
        }
        if (!skipWords(layout, *words, canSeek)) {
            // Twice the number of words, not the bytes to skip: meant.
            VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: short read skip info: %d", *words * 2);
            return std::nullopt;
        }
    }
    return std::nullopt;
}

/// Reads words n to n+count-1 of a core whose version word has just been read.
bool readWords(FILE* layout, unsigned int* out, int n, int count) {
    if (!seek(layout, (n - 1L) * kWordSize)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        const auto word = readBigEndian<std::uint32_t>(layout);
        if (!word) {
            return false;
        }
        out[i] = *word;
    }
    return true;
}

}  // namespace

LayoutFile openLayout(const char* device) {
    const std::string path = std::string("/sys/bus/avalon/devices/") + device + "/layout";
    LayoutFile layout(std::fopen(path.c_str(), "re"));
    if (!layout) {
        VL_LOG(CPCardInterface, ERROR, "could not find: %s", path.c_str());
    }
    return layout;
}

int getPldCoreInfo(FILE* layout, const char* name, unsigned int* out, int n, int count, int minVersion,
                   int maxVersion) {
    const std::optional<std::uint16_t> words = findCore(layout, name);
    if (!words) {
        return NotFound;
    }
    const auto versionWord = readBigEndian<std::uint32_t>(layout);
    if (!versionWord) {
        VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: short read version");
        return NotFound;
    }
    const int version = static_cast<int>(*versionWord);
    if (!isWithin(version, minVersion, maxVersion)) {
        VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: version check failed: %X <= %X <= %X",
               static_cast<unsigned int>(minVersion), *versionWord, static_cast<unsigned int>(maxVersion));
        return WrongVersion;
    }
    if (static_cast<long>(n) + count > *words) {
        // The text says >= where the test says >: meant.
        VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: n+count > words (%d+%d >= %d)", n, count, *words);
        return BeyondRecord;
    }
    if (!readWords(layout, out, n, count)) {
        VL_LOG(CPCardInterface, DEBUG, "GetPLDCoreInfo: short read info");
        return NotFound;
    }
    return Found;
}

int getPldCoreInfo(const char* device, const char* name, unsigned int* out, int n, int minVersion,
                   int maxVersion) {
    const LayoutFile layout = openLayout(device);
    return layout ? getPldCoreInfo(layout.get(), name, out, n, 1, minVersion, maxVersion) : NoLayout;
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
