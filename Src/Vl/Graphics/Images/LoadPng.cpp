#include "Vl/Graphics/Images/PlacedImage.h"
#include "Vl/Graphics/Images/PngReader.h"
#include "Vl/Graphics/Pixels/Bitmap.h"

int Bitmap::loadpng(const char* path, bool resizeToImage) {
    PngReader image;
    if (const auto result = image.readHeader(path); result != PngReader::Ok) {
        return result;
    }
    if (const auto result = image.readImage(); result != PngReader::Ok) {
        return result;
    }
    if (resizeToImage) {
        resize(image.width(), image.height());
    }
    PlacedImage placed(*this, image.width(), image.height());
    for (int row = 0; row < image.height(); ++row) {
        placed.drawRow(row, image.row(row), image.channels());
    }
    placed.movePast();
    return PngReader::Ok;
}
