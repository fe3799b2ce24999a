// Image files by another program: what ImageMagick makes is loaded as it decodes it, what is saved passes
// pngcheck and is read back by it.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

namespace {

class ImageMagickTest : public testing::Test {
protected:
    ImageMagickTest() { std::filesystem::current_path(directory.file("")); }
    ~ImageMagickTest() override { std::filesystem::current_path(before); }

    static void run(const std::string& command) {
        ASSERT_EQ(0, std::system(("OMP_NUM_THREADS=1 " + command).c_str())) << command;
    }

    /// The file's pixels as red, green, blue and alpha.
    static std::string decoded(const std::string& file) {
        run("convert " + file + " -depth 8 rgba:decoded");
        return readBytes("decoded");
    }

    const std::filesystem::path before = std::filesystem::current_path();
    support::TemporaryDirectory directory;
};

/// Fails where the bitmap does not hold the colours and alphas of `rgba`, within what 5-6-5 keeps.
void expectHolds(const RGB16Bitmap& bitmap, const std::string& rgba, int tolerance) {
    const auto byte = [&](size_t i) { return int{static_cast<uint8_t>(rgba.at(i))}; };
    ASSERT_EQ(rgba.size(), size_t{4} * static_cast<size_t>(bitmap.getBuffer().count()));
    for (int i = 0; i < bitmap.getBuffer().count(); ++i) {
        const size_t at = static_cast<size_t>(i) * 4;
        const auto colour = bitmap.getBuffer().getPixel(i);
        ASSERT_NEAR(byte(at) & 0xf8, colour.r(), tolerance) << i;
        ASSERT_NEAR(byte(at + 1) & 0xfc, colour.g(), tolerance) << i;
        ASSERT_NEAR(byte(at + 2) & 0xf8, colour.b(), tolerance) << i;
        ASSERT_EQ(byte(at + 3) * 128 / 255, bitmap.getBuffer().alpha()[i]) << i;
    }
}

constexpr char kPhoto[] = "convert -seed 7 -size 61x47 plasma:tomato-steelblue ";
constexpr char kAlpha[] =
    "\\( -size 61x47 gradient:black-white \\) -alpha off -compose CopyOpacity -composite ";

}  // namespace

TEST_F(ImageMagickTest, PngFilesOfEveryKindAreLoadedAsItDecodesThem) {
    for (const std::string& make : {
             std::string(kPhoto) + "-colorspace Gray -depth 8 -define png:color-type=0 ",
             std::string(kPhoto) + kAlpha + "-colorspace Gray -depth 8 -define png:color-type=4 ",
             std::string(kPhoto) + "-depth 8 -define png:color-type=2 ",
             std::string(kPhoto) + kAlpha + "-depth 8 -define png:color-type=6 ",
             std::string(kPhoto) + "-depth 8 -interlace PNG -define png:color-type=2 ",
             std::string(kPhoto) + kAlpha + "-depth 8 -interlace PNG -define png:color-type=6 ",
             std::string("convert -size 1x1 xc:tomato -define png:color-type=2 "),
             std::string("convert -size 1x5000 gradient:red-blue -depth 8 -define png:color-type=2 "),
             std::string(
                 "convert -size 1x5000 gradient:red-blue -rotate 90 -depth 8 -define png:color-type=6 "),
         }) {
        SCOPED_TRACE(make);
        run(make + "image.png");
        RGB16Bitmap bitmap;
        ASSERT_EQ(0, bitmap.loadpng("image.png", true));
        expectHolds(bitmap, decoded("image.png"), 0);
    }
}

TEST_F(ImageMagickTest, PngFilesOfSixteenBitsAndPalettesAreRefused) {
    RGB16Bitmap bitmap;
    run(std::string(kPhoto) + "-depth 16 -define png:bit-depth=16 -define png:color-type=2 image.png");
    EXPECT_EQ(-8, bitmap.loadpng("image.png", true));
    run(std::string(kPhoto) + "-colors 16 -define png:color-type=3 image.png");
    EXPECT_EQ(-7, bitmap.loadpng("image.png", true));
}

TEST_F(ImageMagickTest, JpegFilesAreLoadedAsItDecodesThem) {
    for (const std::string& make : {
             std::string(kPhoto) + "-sampling-factor 4:4:4 -quality 95 ",
             std::string(kPhoto) + "-sampling-factor 4:2:0 ",
             std::string(kPhoto) + "-sampling-factor 4:2:2 ",
             std::string(kPhoto) + "-interlace JPEG ",
             std::string("convert -size 1x1 xc:tomato "),
             std::string("convert -size 1x5000 gradient:red-blue "),
         }) {
        SCOPED_TRACE(make);
        run(make + "image.jpg");
        RGB16Bitmap bitmap;
        ASSERT_EQ(0, bitmap.loadjpeg("image.jpg", true));
        expectHolds(bitmap, decoded("image.jpg"), 0);
    }
}

TEST_F(ImageMagickTest, JpegFilesInGreyAndCmykAreRefused) {
    RGB16Bitmap bitmap;
    for (const char* colourSpace : {"Gray", "CMYK"}) {
        run(std::string(kPhoto) + "-colorspace " + colourSpace + " image.jpg");
        testing::internal::CaptureStderr();
        EXPECT_EQ(-4, bitmap.loadjpeg("image.jpg", true));
        EXPECT_EQ("invalid number of components\n", testing::internal::GetCapturedStderr());
    }
}

TEST_F(ImageMagickTest, SavedFilesAreSoundAndReadBack) {
    run(std::string(kPhoto) + kAlpha + "-depth 8 image.png");
    BitmapWithBuffer<YUVPixelBuffer> bitmap;
    ASSERT_EQ(0, bitmap.loadpng("image.png", true));
    bitmap.SavePng("saved.png");
    run("pngcheck -q saved.png saved.png_alp.png");

    std::string expected;
    std::string expectedAlpha;
    for (int i = 0; i < 61 * 47; ++i) {
        const rgba colour = bitmap.getBuffer().getPixel(i);
        const auto alpha = static_cast<char>(colour.a() * 255 / 128);
        expected += {static_cast<char>(colour.r()), static_cast<char>(colour.g()),
                     static_cast<char>(colour.b()), alpha};
        expectedAlpha += {alpha, alpha, alpha, '\xff'};
    }
    EXPECT_TRUE(expected == decoded("saved.png"));
    EXPECT_TRUE(expectedAlpha == decoded("saved.png_alp.png"));
}
