#include "Vl/Graphics/Images/PngReader.h"

#include <gmock/gmock.h>

#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"

using testing::AnyOf;
using testing::ElementsAre;

TEST(PngReaderTest, TellsSizeAndChannelsBeforeThePixelsAreRead) {
    const support::TemporaryDirectory directory;
    writePngFile(
        directory.file("a.png"),
        {.width = 3, .height = 2, .colourType = PngFile::GreyAlpha, .samples = std::vector<uint8_t>(12)});
    PngReader reader;
    ASSERT_EQ(PngReader::Ok, reader.readHeader(directory.file("a.png").c_str()));
    EXPECT_EQ(3, reader.width());
    EXPECT_EQ(2, reader.height());
    EXPECT_EQ(2, reader.channels());
    EXPECT_TRUE(reader.pixels().empty());
}

TEST(PngReaderTest, DeliversTheRowsOneAfterAnother) {
    const support::TemporaryDirectory directory;
    writePngFile(directory.file("a.png"),
                 {.width = 2, .height = 2, .colourType = PngFile::Grey, .samples = {1, 2, 3, 4}});
    PngReader reader;
    ASSERT_EQ(PngReader::Ok, reader.readHeader(directory.file("a.png").c_str()));
    ASSERT_EQ(PngReader::Ok, reader.readImage());
    EXPECT_THAT(reader.pixels(), ElementsAre(1, 2, 3, 4));
}

TEST(PngReaderTest, TheHighestCompressionIsNotMistakenForAMissingImage) {
    const support::TemporaryDirectory directory;
    const std::string path = directory.file("flat.png");
    writePngFile(path, {.width = 4000,
                        .height = 4000,
                        .colourType = PngFile::Grey,
                        .samples = std::vector<uint8_t>(4000 * 4000)});
    PngReader reader;
    ASSERT_EQ(PngReader::Ok, reader.readHeader(path.c_str()));
    EXPECT_EQ(PngReader::Ok, reader.readImage());
}

TEST(PngReaderTest, EveryPrefixOfAFileIsRefusedOrRead) {
    const support::TemporaryDirectory directory;
    writePngFile(directory.file("a.png"), {.width = 5,
                                           .height = 4,
                                           .colourType = PngFile::Rgba,
                                           .interlaced = true,
                                           .samples = std::vector<uint8_t>(80, 7)});
    const std::string whole = readBytes(directory.file("a.png"));
    const size_t imageData = whole.find("IDAT") + 4;
    const size_t imageEnd = whole.find("IEND") - 4;
    for (size_t length = 0; length <= whole.size(); ++length) {
        writeBytes(directory.file("cut.png"), whole.substr(0, length));
        PngReader reader;
        auto result = reader.readHeader(directory.file("cut.png").c_str());
        if (result == PngReader::Ok) {
            result = reader.readImage();
        }
        if (length < 8) {
            EXPECT_EQ(PngReader::NotPng, result) << length;
        } else if (length < imageData) {
            EXPECT_EQ(PngReader::HeaderError, result) << length;
        } else {
            EXPECT_EQ(length < imageEnd ? PngReader::ImageError : PngReader::Ok, result) << length;
        }
    }
}

TEST(PngReaderTest, EveryFlippedByteIsRefusedOrRead) {
    const support::TemporaryDirectory directory;
    writePngFile(directory.file("a.png"), {.width = 5, .height = 4, .samples = std::vector<uint8_t>(60, 9)});
    const std::string whole = readBytes(directory.file("a.png"));
    testing::internal::CaptureStderr();
    for (size_t i = 0; i < whole.size(); ++i) {
        std::string broken = whole;
        broken[i] = static_cast<char>(broken[i] ^ 0x55);
        writeBytes(directory.file("broken.png"), broken);
        PngReader reader;
        auto result = reader.readHeader(directory.file("broken.png").c_str());
        if (result == PngReader::Ok) {
            result = reader.readImage();
        }
        if (i < 8) {
            EXPECT_EQ(PngReader::NotPng, result) << i;
        } else if (i < 33) {  // IHDR and its checksum
            EXPECT_EQ(PngReader::HeaderError, result) << i;
        } else {
            EXPECT_THAT(result, AnyOf(PngReader::Ok, PngReader::HeaderError, PngReader::ImageError)) << i;
        }
    }
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}
