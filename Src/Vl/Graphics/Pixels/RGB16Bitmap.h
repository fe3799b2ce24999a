#pragma once

#include "Vl/Graphics/Pixels/BitmapWithBuffer.h"
#include "Vl/Graphics/Pixels/RGBPixelBuffer.h"

/// A bitmap of panel pixels (16-bit RGB 5-6-5 with coverage aside).
class RGB16Bitmap final : public BitmapWithBuffer<RGBPixelBuffer> {
public:
    using BitmapWithBuffer::BitmapWithBuffer;
    ~RGB16Bitmap() override;
};
