#include <vector>

#include "Vl/Graphics/Images/JpegReader.h"
#include "Vl/Graphics/Images/PlacedImage.h"
#include "Vl/Graphics/Pixels/Bitmap.h"

int Bitmap::loadjpeg(const char* path, bool resizeToImage) {
    JpegReader image;
    if (const auto result = image.open(path); result != JpegReader::Ok) {
        return result;
    }
    if (resizeToImage) {
        resize(image.width(), image.height());
    }
    PlacedImage placed(*this, image.width(), image.height());
    std::vector<uint8_t> samples(static_cast<size_t>(image.width()) * JpegReader::kChannels);
    for (int row = 0; row < image.height(); ++row) {
        if (const auto result = image.readRow(samples.data()); result != JpegReader::Ok) {
            return result;
        }
        placed.drawRow(row, samples.data(), JpegReader::kChannels);
    }
    placed.movePast();
    return JpegReader::Ok;
}
