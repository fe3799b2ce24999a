#pragma once

#include "Vl/Graphics/Pixels/Bitmap.h"

/// A bitmap that holds its pixel buffer, a `Buffer` derived from PixelBuffer, by value.
template <typename Buffer>
class BitmapWithBuffer : public Bitmap {
public:
    /// An empty bitmap; see resize.
    BitmapWithBuffer() = default;
    BitmapWithBuffer(int width, int height) { adopt(width, height); }

    Buffer& getBuffer() const override { return buffer_; }

    void resize(int width, int height) override { adopt(width, height); }

private:
    void adopt(int width, int height) {
        buffer_.resize(width, height);
        const bool empty = buffer_.count() == 0;
        setSize(empty ? 0 : width, empty ? 0 : height);
    }

    mutable Buffer buffer_;
};
