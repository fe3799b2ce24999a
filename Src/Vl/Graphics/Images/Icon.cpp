#include "Vl/Graphics/Images/Icon.h"

#include <cstring>

#include "Vl/Graphics/Images/PngReader.h"

void Icon::Load(const char* path) {
    // Copied before the old one goes: `path` may be our own.
    path_.reset(path != nullptr ? strdup(path) : nullptr);
    width_ = 0;
    height_ = 0;
}

void Icon::LoadDim() const {
    width_ = 0;
    height_ = 0;
    PngReader image;
    if (image.readHeader(getPath()) != PngReader::Ok) {
        return;
    }
    width_ = image.width();
    height_ = image.height();
}

int Icon::getWidth() const {
    if (width_ == 0) {
        LoadDim();
    }
    return width_;
}

int Icon::getHeight() const {
    if (height_ == 0) {
        LoadDim();
    }
    return height_;
}
