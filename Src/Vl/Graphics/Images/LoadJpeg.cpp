#include <vector>

#include "Vl/Graphics/Images/JpegReader.h"
#include "Vl/Graphics/Images/PlacedImage.h"
#include "Vl/Graphics/Pixels/Bitmap.h"

namespace {

/// libjpeg stores to an aligned row past the caches, and we read it right away: one pixel off it does not.
constexpr size_t kOffAlignment = JpegReader::kChannels;

}  // namespace

int Bitmap::loadjpeg(const char* path, bool resizeToImage) {
    JpegReader image;
    if (const auto result = image.open(path); result != JpegReader::Ok) {
        return result;
    }
    if (resizeToImage) {
        resize(image.width(), image.height());
    }
    PlacedImage placed(*this, image.width(), image.height());
    std::vector<uint8_t> storage(static_cast<size_t>(image.width()) * JpegReader::kChannels + kOffAlignment);
    uint8_t* const samples = storage.data() + kOffAlignment;
    for (int row = 0; row < image.height(); ++row) {
        if (const auto result = image.readRow(samples); result != JpegReader::Ok) {
            return result;
        }
        placed.drawRow(row, samples, JpegReader::kChannels);
    }
    placed.movePast();
    return JpegReader::Ok;
}
