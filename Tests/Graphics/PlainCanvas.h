#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "Vl/Graphics/Pixels/BitmapWithBuffer.h"

/// A pixel buffer that keeps colours as they come, instead of blending them, and fails the test where an
/// index lies outside.
class PlainCanvasBuffer final : public PixelBuffer {
public:
    void setPixel(int index, rgba colour) override {
        ASSERT_GE(index, 0);
        ASSERT_LT(index, count());
        pixels[static_cast<size_t>(index)] = colour;
    }
    void fillRect(int, int, int, int, rgba) override { FAIL() << "nothing fills"; }
    rgba getPixel(int index) const override { return pixels.at(static_cast<size_t>(index)); }
    void resize(int width, int height) override { pixels.assign(static_cast<size_t>(width * height), 0); }
    int count() const { return static_cast<int>(pixels.size()); }

    std::vector<rgba> pixels;
};

using PlainCanvas = BitmapWithBuffer<PlainCanvasBuffer>;
