#include "Vl/Graphics/Images/JpegReader.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "Tests/Graphics/JpegFiles.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"

using testing::Each;
using testing::ElementsAreArray;
using testing::HasSubstr;

namespace {

class JpegReaderTest : public testing::Test {
protected:
    /// Reads the whole file and returns the first result that is not Ok.
    JpegReader::Result readAll() {
        JpegReader reader;
        auto result = reader.open(path.c_str());
        const int rows = result == JpegReader::Ok ? reader.height() : 0;
        samples.clear();
        for (int row = 0; row < rows && result == JpegReader::Ok; ++row) {
            std::vector<uint8_t> line(static_cast<size_t>(reader.width()) * 4);
            result = reader.readRow(line.data());
            samples.insert(samples.end(), line.begin(), line.end());
        }
        return result;
    }

    support::TemporaryDirectory directory;
    std::string path = directory.file("image.jpg");
    std::vector<uint8_t> samples;
};

/// A picture without sharp edges, which JPEG keeps well.
std::vector<uint8_t> slopes(int width, int height) {
    std::vector<uint8_t> samples;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            samples.insert(samples.end(), {static_cast<uint8_t>(x * 8), static_cast<uint8_t>(y * 8),
                                           static_cast<uint8_t>(255 - x * 4 - y * 4)});
        }
    }
    return samples;
}

}  // namespace

TEST_F(JpegReaderTest, TellsTheSizeBeforeTheRowsAreRead) {
    writeJpegFile(path, {.width = 17, .height = 9, .samples = slopes(17, 9)});
    JpegReader reader;
    ASSERT_EQ(JpegReader::Ok, reader.open(path.c_str()));
    EXPECT_EQ(17, reader.width());
    EXPECT_EQ(9, reader.height());
}

TEST_F(JpegReaderTest, DeliversRedGreenBlueAndTwoHundredFiftyFiveFromTheTop) {
    for (const bool storedAsRgb : {false, true}) {
        writeJpegFile(path, {.width = 17, .height = 9, .storedAsRgb = storedAsRgb, .samples = slopes(17, 9)});
        ASSERT_EQ(JpegReader::Ok, readAll());
        const std::vector<uint8_t> expected = slopes(17, 9);
        ASSERT_EQ(expected.size() / 3 * 4, samples.size());
        for (size_t i = 0; i < expected.size(); ++i) {
            ASSERT_NEAR(expected[i], samples[i / 3 * 4 + i % 3], 4) << i;
            ASSERT_EQ(255, samples[i / 3 * 4 + 3]);
        }
    }
}

TEST_F(JpegReaderTest, AProgressiveFileIsTheSamePicture) {
    writeJpegFile(path, {.width = 17, .height = 9, .samples = slopes(17, 9)});
    ASSERT_EQ(JpegReader::Ok, readAll());
    const std::vector<uint8_t> straight = samples;
    writeJpegFile(path, {.width = 17, .height = 9, .progressive = true, .samples = slopes(17, 9)});
    ASSERT_EQ(JpegReader::Ok, readAll());
    EXPECT_THAT(samples, ElementsAreArray(straight));
}

TEST_F(JpegReaderTest, AFileOfMoreScansThanAnyoneNeedsIsRefused) {
    writeJpegFile(path, {.width = 17, .height = 9, .scanPerCoefficient = true, .samples = slopes(17, 9)});
    testing::internal::CaptureStderr();
    EXPECT_EQ(JpegReader::LibraryError, readAll());
    EXPECT_EQ("too many scans\n", testing::internal::GetCapturedStderr());
}

TEST_F(JpegReaderTest, AFileThatEndsEarlyIsReadWithAWarning) {
    writeJpegFile(path, {.width = 64, .height = 64, .samples = std::vector<uint8_t>(64 * 64 * 3, 200)});
    const std::string whole = readBytes(path);
    writeBytes(path, whole.substr(0, whole.size() - 40));
    testing::internal::CaptureStderr();
    EXPECT_EQ(JpegReader::Ok, readAll());
    EXPECT_EQ("Premature end of JPEG file\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ(64U * 64 * 4, samples.size());
    EXPECT_NEAR(200, samples[0], 1);
}

TEST_F(JpegReaderTest, EveryPrefixOfAFileIsRefusedOrRead) {
    for (const bool progressive : {false, true}) {
        writeJpegFile(path, {.width = 17, .height = 9, .progressive = progressive, .samples = slopes(17, 9)});
        const std::string whole = readBytes(path);
        const size_t scan = whole.find("\xff\xda");
        ASSERT_NE(std::string::npos, scan);
        testing::internal::CaptureStderr();
        for (size_t length = 0; length <= whole.size(); ++length) {
            writeBytes(path, whole.substr(0, length));
            const auto result = readAll();
            if (length <= scan) {
                EXPECT_EQ(JpegReader::LibraryError, result) << length;
            } else if (!progressive && length > scan + 14) {  // a progressive file's tables may be missing
                EXPECT_EQ(JpegReader::Ok, result) << length;
            }
        }
        testing::internal::GetCapturedStderr();
    }
}

TEST_F(JpegReaderTest, EveryFlippedByteIsRefusedOrRead) {
    writeJpegFile(path, {.width = 17, .height = 9, .samples = slopes(17, 9)});
    const std::string whole = readBytes(path);
    testing::internal::CaptureStderr();
    for (size_t i = 0; i < whole.size(); ++i) {
        std::string broken = whole;
        broken[i] = static_cast<char>(broken[i] ^ 0x55);
        writeBytes(path, broken);
        const auto result = readAll();
        EXPECT_LE(result, 0);
        if (i < 2) {  // the marker that every file begins with
            EXPECT_EQ(JpegReader::LibraryError, result);
        }
    }
    testing::internal::GetCapturedStderr();
}

TEST_F(JpegReaderTest, ASizeOfZeroOrBeyondTheLimitsIsRefusedAndSaid) {
    struct Case {
        uint16_t width;
        uint16_t height;
        JpegReader::Result result;
        const char* said;
    };
    const Case cases[] = {
        {0, 8, JpegReader::LibraryError, "Empty JPEG image"},
        {8, 0, JpegReader::LibraryError, "Empty JPEG image"},
        {65501, 1, JpegReader::LibraryError, "Maximum supported image dimension is 65500 pixels"},
        {1, 65501, JpegReader::LibraryError, "Maximum supported image dimension is 65500 pixels"},
        {8193, 8192, JpegReader::LibraryError, "too many pixels\n"},
        {65500, 65500, JpegReader::LibraryError, "too many pixels\n"},
        {65500, 1, JpegReader::Ok, ""},
        {1, 65500, JpegReader::Ok, ""},
    };
    for (const auto& [width, height, result, said] : cases) {
        writeBytes(path, jpegWithClaimedSize(path, width, height));
        testing::internal::CaptureStderr();
        EXPECT_EQ(result, readAll()) << width << " x " << height;
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(said)) << width << " x " << height;
    }
}
