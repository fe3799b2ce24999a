#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace overlays {

using File = std::vector<std::byte>;

inline File bytes(std::initializer_list<unsigned> values) {
    File file;
    for (const unsigned value : values) {
        file.push_back(static_cast<std::byte>(value));
    }
    return file;
}

inline void append(File& file, std::uint32_t word) {
    for (const int shift : {24, 16, 8, 0}) {
        file.push_back(static_cast<std::byte>(word >> shift & 0xFF));
    }
}

inline File words(std::initializer_list<std::uint32_t> values) {
    File file;
    for (const std::uint32_t value : values) {
        append(file, value);
    }
    return file;
}

inline File operator+(File front, const File& back) {
    front.insert(front.end(), back.begin(), back.end());
    return front;
}

/// The body padded to 128 bytes behind a header that tells its length.
inline File container(std::uint32_t identifier, File body) {
    body.resize((body.size() + 127) / 128 * 128);
    return words({0xFFFFFFFF, identifier, static_cast<std::uint32_t>(body.size() / 4)}) + body;
}

/// 100 opaque white pixels (Y 940, chroma 256: codes 29, 16, 16) as the device's writer stores them: a run of
/// 100 = 64h, the end, padding to 32 words.
inline File whiteHundred() {
    File file = bytes({0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 7, 0, 0, 0, 32, 0x01, 0x92, 0x76, 0x10, 0, 0, 0, 0});
    file.resize(12 + 128);
    return file;
}

/// A word of `length` pixels with these codes.
inline std::uint32_t run(std::uint32_t length, std::uint32_t luma, std::uint32_t cb, std::uint32_t cr,
                         std::uint32_t level) {
    return length << 18 | level << 15 | luma << 10 | cb << 5 | cr;
}

}  // namespace overlays
