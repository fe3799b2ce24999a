#include <gmock/gmock.h>

#include <climits>
#include <filesystem>
#include <fstream>

#include "Tests/Graphics/ExpectSame.h"
#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainFrame.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

namespace {

class LoadPngTest : public testing::Test {
protected:
    int load(bool resize = false) { return bitmap.loadpng(path.c_str(), resize); }
    std::string art() const { return artOf(bitmap.getWidth(), bitmap.getHeight(), bitmap.getBuffer()); }

    /// A white RGB picture of the given size.
    void writeWhite(uint32_t width, uint32_t height) {
        writePngFile(path, {.width = width,
                            .height = height,
                            .samples = std::vector<uint8_t>(size_t{width} * height * 3, 255)});
    }

    /// An otherwise good file whose header claims another size.
    void writeWithClaimedSize(uint32_t width, uint32_t height) {
        // Chunk length, type, 13 bytes and checksum, as libpng writes them for the real thing.
        const auto bigEndian = [](uint32_t value) {
            return std::string{static_cast<char>(value >> 24), static_cast<char>(value >> 16),
                               static_cast<char>(value >> 8), static_cast<char>(value)};
        };
        writeWhite(2, 2);
        std::string bytes = readBytes(path);
        bytes.replace(16, 8, bigEndian(width) + bigEndian(height));
        uint32_t crc = ~0U;
        for (const char c : bytes.substr(12, 17)) {
            crc ^= static_cast<uint8_t>(c);
            for (int bit = 0; bit < 8; ++bit) {
                crc = crc >> 1 ^ (crc % 2 != 0 ? 0xedb88320U : 0);
            }
        }
        bytes.replace(29, 4, bigEndian(~crc));
        writeBytes(path, bytes);
    }

    support::TemporaryDirectory directory;
    std::string path = directory.file("image.png");
    RGB16Bitmap bitmap{8, 4};
};

}  // namespace

TEST_F(LoadPngTest, DrawsAtTheDrawingPositionAndMovesPastThePicture) {
    writeWhite(3, 2);
    bitmap.setPosition(1, 1);
    EXPECT_EQ(0, load());
    EXPECT_EQ(art(),
              "........\n"
              ".###....\n"
              ".###....\n"
              "........\n");
    EXPECT_EQ(4, bitmap.getX());
    EXPECT_EQ(1, bitmap.getY());
}

TEST_F(LoadPngTest, CentresAboutTheDrawingPosition) {
    writeWhite(3, 3);
    bitmap.setPosition(4, 2);
    bitmap.setHorizontalAlignment(HorizontalAlignment::Centred);
    bitmap.setVerticalAlignment(VerticalAlignment::Centred);
    EXPECT_EQ(0, load());
    EXPECT_EQ(art(),
              "........\n"
              "...###..\n"
              "...###..\n"
              "...###..\n");
    EXPECT_EQ(4, bitmap.getX());
    EXPECT_EQ(2, bitmap.getY());
}

TEST_F(LoadPngTest, EndsAtTheDrawingPosition) {
    writeWhite(3, 3);
    bitmap.setPosition(8, 4);
    bitmap.setHorizontalAlignment(HorizontalAlignment::End);
    bitmap.setVerticalAlignment(VerticalAlignment::Bottom);
    EXPECT_EQ(0, load());
    EXPECT_EQ(art(),
              "........\n"
              ".....###\n"
              ".....###\n"
              ".....###\n");
    EXPECT_EQ(5, bitmap.getX());  // the column stays where the picture began
    EXPECT_EQ(4, bitmap.getY());
}

TEST_F(LoadPngTest, DropsWhatLiesOutsideOnEverySide) {
    writeWhite(4, 3);
    bitmap.setPosition(-2, -1);
    EXPECT_EQ(0, load());
    bitmap.setPosition(6, 3);
    EXPECT_EQ(0, load());
    EXPECT_EQ(art(),
              "##......\n"
              "##......\n"
              "........\n"
              "......##\n");
}

TEST_F(LoadPngTest, FarAwayNothingIsDrawn) {
    writeWhite(4, 3);
    for (const int far : {INT_MIN, INT_MAX, -100, 100}) {
        for (const auto alignment : {HorizontalAlignment::Start, HorizontalAlignment::End}) {
            bitmap.setHorizontalAlignment(alignment);
            bitmap.setPosition(far, far);
            EXPECT_EQ(0, load());
        }
    }
    EXPECT_THAT(art(), testing::Not(testing::HasSubstr("#")));
}

TEST_F(LoadPngTest, ResizeTakesTheImagesSizeFirst) {
    writeWhite(3, 2);
    EXPECT_EQ(0, load(true));
    EXPECT_EQ(3, bitmap.getWidth());
    EXPECT_EQ(2, bitmap.getHeight());
    EXPECT_EQ(art(), "###\n###\n");
}

TEST_F(LoadPngTest, RgbIsOpaque) {
    writePngFile(path, {.width = 1, .height = 1, .samples = {0x10, 0x20, 0x40}});
    EXPECT_EQ(0, load());
    EXPECT_EQ(rgba(0xff402010), bitmap.getBuffer().getPixel(0));
    EXPECT_EQ(128, bitmap.getBuffer().alpha()[0]);
}

TEST_F(LoadPngTest, GreyGoesToAllThreeChannels) {
    writePngFile(path, {.colourType = PngFile::Grey, .samples = {0x48}});
    EXPECT_EQ(0, load());
    EXPECT_EQ(rgba(0xff484848), bitmap.getBuffer().getPixel(0));
}

TEST_F(LoadPngTest, AlphaIsScaledFromTwoHundredFiftyFiveToOneHundredTwentyEight) {
    writePngFile(path, {.width = 4,
                        .colourType = PngFile::Rgba,
                        .samples = {1, 2, 3, 0, 1, 2, 3, 1, 1, 2, 3, 254, 1, 2, 3, 255}});
    EXPECT_EQ(0, load());
    EXPECT_EQ(0, bitmap.getBuffer().alpha()[0]);
    EXPECT_EQ(0, bitmap.getBuffer().alpha()[1]);
    EXPECT_EQ(127, bitmap.getBuffer().alpha()[2]);
    EXPECT_EQ(128, bitmap.getBuffer().alpha()[3]);
}

TEST_F(LoadPngTest, GreyWithAlphaBlendsOverThePicture) {
    writePngFile(path, {.width = 2, .colourType = PngFile::GreyAlpha, .samples = {255, 128, 255, 0}});
    bitmap.FillRect(8, 4, 0x80000000);
    EXPECT_EQ(0, load());
    EXPECT_EQ(rgba(0xff787c78), bitmap.getBuffer().getPixel(0));
    EXPECT_EQ(rgba(0xff000000), bitmap.getBuffer().getPixel(1));
}

TEST_F(LoadPngTest, AnInterlacedPictureIsTheSamePicture) {
    PngFile file{.width = 8, .height = 4, .colourType = PngFile::Rgb, .samples = {}};
    for (int i = 0; i < 8 * 4 * 3; ++i) {
        file.samples.push_back(static_cast<uint8_t>(i * 37));
    }
    writePngFile(path, file);
    EXPECT_EQ(0, load());
    const PlainFrame straight(8, 4, bitmap.getBuffer());
    file.interlaced = true;
    writePngFile(path, file);
    bitmap.resize(8, 4);
    bitmap.setPosition(0, 0);
    EXPECT_EQ(0, load());
    expectSame(straight, bitmap.getBuffer());
}

TEST_F(LoadPngTest, AFileThatCannotBeOpenedIsMinusOne) {
    EXPECT_EQ(-1, bitmap.loadpng(directory.file("none.png").c_str(), false));
    EXPECT_EQ(-1, bitmap.loadpng(nullptr, false));
    EXPECT_EQ(-1, bitmap.loadpng("", false));
}

TEST_F(LoadPngTest, AFileThatIsNotPngIsMinusTwo) {
    for (const char* bytes : {"", "\x89PNG", "GIF89a and more", "\x89PNG\r\n\x1a\r"}) {
        writeBytes(path, bytes);
        EXPECT_EQ(-2, load()) << bytes;
    }
    EXPECT_EQ(-2, bitmap.loadpng(std::filesystem::current_path().c_str(), false));
}

TEST_F(LoadPngTest, AMissingReadStructureIsMinusThree) {
    writeWhite(1, 1);
    FaultyLibraries faults;
    faults->createReadStruct = true;
    EXPECT_EQ(-3, load());
}

TEST_F(LoadPngTest, AMissingInfoStructureIsMinusFour) {
    writeWhite(1, 1);
    FaultyLibraries faults;
    faults->createInfoStruct = true;
    EXPECT_EQ(-4, load());
}

TEST_F(LoadPngTest, ABrokenHeaderIsMinusFive) {
    writeWhite(1, 1);
    std::string bytes = readBytes(path);
    bytes[29] = static_cast<char>(~bytes[29]);  // the header's checksum
    writeBytes(path, bytes);
    testing::internal::CaptureStderr();
    EXPECT_EQ(-5, load());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST_F(LoadPngTest, ACutImageIsMinusSixAndDrawsAndMovesNothing) {
    writePngFile(path, {.width = 8, .height = 4, .samples = [] {
                            std::vector<uint8_t> noise(96);
                            for (size_t i = 0; i < noise.size(); ++i) {
                                noise[i] = static_cast<uint8_t>(i * i * 31);
                            }
                            return noise;
                        }()});
    const std::string bytes = readBytes(path);
    writeBytes(path, bytes.substr(0, 60));
    bitmap.setPosition(1, 1);
    bitmap.setHorizontalAlignment(HorizontalAlignment::Centred);
    testing::internal::CaptureStderr();
    EXPECT_EQ(-6, load(true));
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_EQ(8, bitmap.getWidth());
    EXPECT_EQ(1, bitmap.getX());
    EXPECT_THAT(art(), testing::Not(testing::HasSubstr("#")));
}

TEST_F(LoadPngTest, AnImageWithABrokenChecksumIsMinusSix) {
    writeWhite(2, 2);
    std::string bytes = readBytes(path);
    const size_t checksum = bytes.find("IEND") - 8;
    bytes[checksum] = static_cast<char>(~bytes[checksum]);
    writeBytes(path, bytes);
    EXPECT_EQ(-6, load());
    EXPECT_THAT(art(), testing::Not(testing::HasSubstr("#")));
}

TEST_F(LoadPngTest, APaletteImageIsMinusSevenAtAnyDepth) {
    writePngFile(path, {.colourType = PngFile::Palette, .bitDepth = 8, .samples = {1}});
    EXPECT_EQ(-7, load());
    writePngFile(path, {.colourType = PngFile::Palette, .bitDepth = 1, .samples = {0x80}});
    EXPECT_EQ(-7, load());
}

TEST_F(LoadPngTest, AnotherBitDepthThanEightIsMinusEight) {
    writePngFile(path, {.colourType = PngFile::Grey, .bitDepth = 1, .samples = {0x80}});
    EXPECT_EQ(-8, load());
    writePngFile(path, {.colourType = PngFile::Rgb, .bitDepth = 16, .samples = {0, 0, 0, 0, 0, 0}});
    EXPECT_EQ(-8, load());
}

TEST_F(LoadPngTest, AnAbsurdSizeIsRefusedInTheHeader) {
    writeWithClaimedSize(1000001, 2);
    EXPECT_EQ(-5, load());
    writeWithClaimedSize(2, 1000001);
    EXPECT_EQ(-5, load());
    writeWithClaimedSize(0x7fffffff, 0x7fffffff);
    EXPECT_EQ(-5, load());
}

TEST_F(LoadPngTest, VeryLongRowsAndColumnsAreRead) {
    writeWhite(9000, 1);
    EXPECT_EQ(0, load());
    EXPECT_EQ(9000, bitmap.getX());
    writeWhite(1, 9000);
    bitmap.setPosition(0, 0);
    EXPECT_EQ(0, load(true));
    EXPECT_EQ(9000, bitmap.getHeight());
    EXPECT_EQ(128, bitmap.getBuffer().alpha()[8999]);
}

TEST_F(LoadPngTest, AnImageThatWouldTakeAllMemoryIsAnImageErrorEvenInALargeFile) {
    writeWithClaimedSize(1000000, 1000000);
    std::filesystem::resize_file(path, uintmax_t{1} << 32);  // sparse
    EXPECT_EQ(-6, load());
}

TEST_F(LoadPngTest, ASizeThatTheFileCannotHoldIsAnImageError) {
    writeWithClaimedSize(8192, 8192);
    EXPECT_EQ(-6, load());
    writeWithClaimedSize(3, 2);  // little enough to be tried
    EXPECT_EQ(-6, load());
}

TEST_F(LoadPngTest, AnOverlayBitmapTakesThePictureAsSinglePixelsDo) {
    PngFile file{.width = 37, .height = 5, .colourType = PngFile::Rgba, .samples = {}};
    for (size_t i = 0; i < 37 * 5 * 4; ++i) {
        file.samples.push_back(static_cast<uint8_t>(i * i * 31 + i));
    }
    writePngFile(path, file);
    BitmapWithBuffer<YUVPixelBuffer> overlay(37, 5);
    overlay.FillRect(37, 5, 0x60402010);
    YUVPixelBuffer expected;
    expected.resize(37, 5);
    expected.fillRect(0, 0, 37, 5, 0x60402010);
    for (int i = 0; i < 37 * 5; ++i) {
        const uint8_t* sample = file.samples.data() + i * 4;
        const uint32_t coverage = sample[3] * 128U / 255;
        expected.setPixel(
            i, uint32_t{sample[0]} | uint32_t{sample[1]} << 8 | uint32_t{sample[2]} << 16 | coverage << 24);
    }
    ASSERT_EQ(0, overlay.loadpng(path.c_str(), false));
    for (int i = 0; i < 37 * 5; ++i) {
        ASSERT_EQ(expected.pixels()[i], overlay.getBuffer().pixels()[i]) << i;
    }
}
