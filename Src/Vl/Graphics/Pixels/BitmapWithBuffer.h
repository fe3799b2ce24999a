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
        setSize(0, 0);
        buffer_.resize(width, height);
        if (buffer_.count() > 0) {
            setSize(width, height);
        }
    }

    mutable Buffer buffer_;
};
