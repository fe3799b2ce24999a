// Any JPEG file: onto a panel at any place and alignment, and as a bitmap of its own.
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "Fuzz/MemoryFile.h"
#include "Vl/Graphics/Images/JpegReader.h"
#include "Vl/Graphics/Pixels/BitmapWithBuffer.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

namespace {

/// Larger pictures take too long to try many of them.
constexpr int64_t kMostPixels = 1 << 20;

int64_t pixelsOf(const MemoryFile& file) {
    JpegReader reader;
    return reader.open(file.path()) == JpegReader::Ok ? int64_t{reader.width()} * reader.height() : 0;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    stderr = std::fopen("/dev/null", "w");  // what is wrong with every file; the sanitizers do not go by this
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static MemoryFile file;
    file.write(data, size);
    if (pixelsOf(file) > kMostPixels) {
        return 0;
    }
    const int choice = size > 0 ? data[size - 1] : 0;
    static RGB16Bitmap panel(160, 48);
    panel.setPlacement({choice - 100, choice / 2 - 50, static_cast<VerticalAlignment>(choice / 3 % 3),
                        static_cast<HorizontalAlignment>(choice % 3)});
    panel.loadjpeg(file.path(), false);
    BitmapWithBuffer<YUVPixelBuffer> overlay;
    overlay.loadjpeg(file.path(), true);
    return 0;
}
