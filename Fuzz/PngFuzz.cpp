// Any PNG file: the input as it is, and a well-formed file whose header and image are the input's bytes, so
// that what lies behind libpng's checksums is reached as well.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Fuzz/MemoryFile.h"
#include "Vl/Graphics/Images/Icon.h"
#include "Vl/Graphics/Pixels/BitmapWithBuffer.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n";
constexpr size_t kHeaderBytes = 13;
constexpr size_t kMostInAStoredBlock = 0xffff;

std::string bigEndian(uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

uint32_t crc32(std::string_view bytes) {
    uint32_t crc = ~0U;
    for (const char c : bytes) {
        crc ^= static_cast<uint8_t>(c);
        for (int bit = 0; bit < 8; ++bit) {
            crc = crc >> 1 ^ (crc % 2 != 0 ? 0xedb88320U : 0);
        }
    }
    return ~crc;
}

std::string chunk(std::string_view type, std::string_view data) {
    const std::string checked = std::string(type) + std::string(data);
    return bigEndian(static_cast<uint32_t>(data.size())) + checked + bigEndian(crc32(checked));
}

/// The bytes as a zlib stream that stores them in one block.
std::string stored(std::string_view bytes) {
    bytes = bytes.substr(0, kMostInAStoredBlock);
    uint32_t low = 1;
    uint32_t high = 0;
    for (const char c : bytes) {
        low = (low + static_cast<uint8_t>(c)) % 65521;
        high = (high + low) % 65521;
    }
    const std::string length = bigEndian(static_cast<uint32_t>(bytes.size()));
    const char lengths[] = {length[3], length[2], static_cast<char>(~length[3]),
                            static_cast<char>(~length[2])};
    return "\x78\x01\x01" + std::string(lengths, sizeof lengths) + std::string(bytes) +
           bigEndian(high << 16 | low);
}

/// Width and height are cut to 255: larger ones need more bytes than an input has.
std::string wellFormed(std::string_view input) {
    std::string header(input.substr(0, kHeaderBytes));
    std::fill_n(header.begin(), 3, '\0');
    std::fill_n(header.begin() + 4, 3, '\0');
    return std::string(kSignature) + chunk("IHDR", header) +
           chunk("IDAT", stored(input.substr(kHeaderBytes))) + chunk("IEND", {});
}

/// Reads the file `bytes` at a place and alignment that `choice` makes.
void readFile(std::string_view bytes, uint8_t choice) {
    static MemoryFile file;
    file.write(bytes.data(), bytes.size());
    Icon icon;
    icon.Load(file.path());
    icon.LoadDim();

    static RGB16Bitmap panel(160, 48);
    panel.setPosition(choice - 100, choice / 2 - 50);
    panel.setHorizontalAlignment(static_cast<HorizontalAlignment>(choice % 3));
    panel.setVerticalAlignment(static_cast<VerticalAlignment>(choice / 3 % 3));
    panel.loadpng(file.path(), false);
    if (int64_t{icon.getWidth()} * icon.getHeight() < 1 << 20) {
        RGB16Bitmap bitmap;
        bitmap.loadpng(file.path(), true);
        BitmapWithBuffer<YUVPixelBuffer> overlay;
        overlay.loadpng(file.path(), true);
        overlay.setPlacement(panel.getPlacement());
        overlay.loadpng(file.path(), false);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const uint8_t choice = size > 0 ? data[size - 1] : 0;
    readFile(input, choice);
    if (size >= kHeaderBytes) {
        readFile(wellFormed(input), choice);
    }
    return 0;
}
