#include "Tests/Graphics/ExpectSame.h"

#include <gtest/gtest.h>

#include "Tests/Graphics/PlainFrame.h"
#include "Vl/Graphics/Pixels/RGBPixelBuffer.h"

void expectSame(const PlainFrame& expected, const RGBPixelBuffer& actual) {
    ASSERT_EQ(expected.colours.size(), static_cast<size_t>(actual.count()));
    for (size_t i = 0; i < expected.colours.size(); ++i) {
        ASSERT_EQ(expected.colours[i], actual.pixels()[i]) << "colour of pixel " << i;
        ASSERT_EQ(expected.coverage[i], actual.alpha()[i]) << "coverage of pixel " << i;
    }
}
