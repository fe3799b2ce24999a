#pragma once

struct PlainFrame;
class RGBPixelBuffer;

/// Fails the test where the buffer does not hold the frame's pixels, and says the first difference.
void expectSame(const PlainFrame& expected, const RGBPixelBuffer& actual);
