#include "Vl/Graphics/Images/WritePngSteps.h"

#include <gmock/gmock.h>

#include <memory>

#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

namespace {

class WritePngStepsTest : public testing::Test {
protected:
    WritePngStepsTest() {
        output.file = file.get();
        output.width = 2;
        output.height = 3;
    }
    ~WritePngStepsTest() override { writepng_cleanup(output); }

    std::string bytes() {
        std::fflush(file.get());
        return readBytes(path);
    }

    struct CloseFile {
        void operator()(FILE* open) const { std::fclose(open); }
    };
    support::TemporaryDirectory directory;
    std::string path = directory.file("out.png");
    std::unique_ptr<FILE, CloseFile> file{std::fopen(path.c_str(), "wb")};
    PngOutput output;
    const std::vector<uint8_t> samples = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                                          13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 255};
};

}  // namespace

TEST_F(WritePngStepsTest, RowsAreWrittenOneAtATime) {
    ASSERT_EQ(0, writepng_init(output));
    for (size_t row = 0; row < 3; ++row) {
        ASSERT_EQ(0, writepng_encode_row(output, samples.data() + row * 8));
    }
    ASSERT_EQ(0, writepng_encode_finish(output));
    const PngPixels read = readPngFile(path);  // the last step leaves nothing in memory
    EXPECT_EQ(2U, read.width);
    EXPECT_EQ(3U, read.height);
    EXPECT_THAT(read.samples, ElementsAreArray(samples));
}

TEST_F(WritePngStepsTest, AnInterlacedImageIsWrittenWhole) {
    output.interlaced = true;
    ASSERT_EQ(0, writepng_init(output));
    const uint8_t* rows[] = {samples.data(), samples.data() + 8, samples.data() + 16};
    ASSERT_EQ(0, writepng_encode_image(output, rows));
    ASSERT_EQ(0, writepng_encode_finish(output));
    EXPECT_THAT(readPngFile(path).samples, ElementsAreArray(samples));
    EXPECT_EQ('\1', bytes()[28]);  // IHDR's interlace method
}

TEST_F(WritePngStepsTest, TheHeaderSaysEightBitsRgbaAndNotInterlaced) {
    ASSERT_EQ(0, writepng_init(output));
    EXPECT_EQ(std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\2\0\0\0\3\x08\x06\0\0\0", 29),
              bytes().substr(0, 29));
    EXPECT_EQ(33U, bytes().size());
}

TEST_F(WritePngStepsTest, TheHighestCompressionIsAsked) {
    ASSERT_EQ(0, writepng_init(output));
    for (size_t row = 0; row < 3; ++row) {
        ASSERT_EQ(0, writepng_encode_row(output, samples.data() + row * 8));
    }
    ASSERT_EQ(0, writepng_encode_finish(output));
    const size_t image = bytes().find("IDAT");
    ASSERT_NE(std::string::npos, image);
    EXPECT_EQ(3, static_cast<uint8_t>(bytes()[image + 5]) >> 6);  // zlib's FLEVEL
}

TEST_F(WritePngStepsTest, ChunksAreOnlyWrittenWhenAsked) {
    ASSERT_EQ(0, writepng_init(output));
    for (const char* chunk : {"gAMA", "bKGD", "tIME", "tEXt"}) {
        EXPECT_THAT(bytes(), Not(HasSubstr(chunk)));
    }
}

TEST_F(WritePngStepsTest, GammaBackgroundTimeAndTextAreWrittenWhenAsked) {
    const PngOutput::Text texts[] = {{"Title", "A picture"}, {"Author", "Somebody"}};
    output.gamma = 0.5;
    output.background = 0x00030201;
    output.modified = 86399;  // the last second of 1 January 1970
    output.texts = texts;
    ASSERT_EQ(0, writepng_init(output));
    EXPECT_THAT(bytes(), HasSubstr(std::string("\0\0\0\4gAMA\0\0\xc3\x50", 12)));
    EXPECT_THAT(bytes(), HasSubstr(std::string("\0\0\0\6bKGD\0\1\0\2\0\3", 14)));
    EXPECT_THAT(bytes(), HasSubstr(std::string("\0\0\0\7tIME\x07\xb2\1\1\x17\x3b\x3b", 15)));
    EXPECT_THAT(bytes(), HasSubstr(std::string("tEXtTitle\0A picture", 19)));
    EXPECT_THAT(bytes(), HasSubstr(std::string("tEXtAuthor\0Somebody", 19)));
}

TEST_F(WritePngStepsTest, ANegativeGammaIsNotWritten) {
    output.gamma = -1.0;
    ASSERT_EQ(0, writepng_init(output));
    EXPECT_THAT(bytes(), Not(HasSubstr("gAMA")));
}

TEST_F(WritePngStepsTest, MissingStructuresAreFour) {
    FaultyLibraries faults;
    faults->createWriteStruct = true;
    EXPECT_EQ(4, writepng_init(output));
    faults->createWriteStruct = false;
    faults->createInfoStruct = true;
    EXPECT_EQ(4, writepng_init(output));
}

TEST_F(WritePngStepsTest, AnotherKindOfPixelsIsEleven) {
    output.pnmType = 6;
    EXPECT_EQ(11, writepng_init(output));
    EXPECT_EQ("", bytes());
}

TEST_F(WritePngStepsTest, ASizeOrDepthThatLibpngRefusesIsTwoWithItsReason) {
    struct Case {
        int width, height, depth;
    };
    for (const auto& [width, height, depth] :
         {Case{0, 3, 8}, Case{2, 0, 8}, Case{-1, 3, 8}, Case{2, -1, 8}, Case{1000001, 1, 8}, Case{2, 3, 7}}) {
        PngOutput refused;
        refused.file = file.get();
        refused.width = width;
        refused.height = height;
        refused.sampleDepth = depth;
        testing::internal::CaptureStderr();
        EXPECT_EQ(2, writepng_init(refused));
        EXPECT_THAT(testing::internal::GetCapturedStderr(),
                    HasSubstr("writepng libpng error: Invalid IHDR data\n"));
        writepng_cleanup(refused);
    }
    EXPECT_EQ("", bytes());
}

TEST_F(WritePngStepsTest, WithoutAFileTheFirstBytesFail) {
    output.file = nullptr;
    testing::internal::CaptureStderr();
    EXPECT_EQ(2, writepng_init(output));
    EXPECT_EQ("writepng libpng error: Write Error\n", testing::internal::GetCapturedStderr());
}

TEST_F(WritePngStepsTest, TooFewRowsAreAnErrorAtTheEnd) {
    ASSERT_EQ(0, writepng_init(output));
    testing::internal::CaptureStderr();
    EXPECT_EQ(2, writepng_encode_finish(output));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("writepng libpng error: No IDATs written"));
}

TEST_F(WritePngStepsTest, ARowThatTheDiskDoesNotTakeIsTwo) {
    ASSERT_EQ(0, writepng_init(output));
    file.reset(std::freopen("/dev/full", "wb", file.release()));
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    output.file = file.get();
    ASSERT_EQ(0, writepng_encode_row(output, samples.data()));
    ASSERT_EQ(0, writepng_encode_row(output, samples.data() + 8));
    testing::internal::CaptureStderr();
    EXPECT_EQ(2, writepng_encode_row(output, samples.data() + 16));  // the last row brings out the image
    EXPECT_EQ("writepng libpng error: Write Error\n", testing::internal::GetCapturedStderr());
}

TEST_F(WritePngStepsTest, CleanupMayComeAtAnyTimeAndTwice) {
    writepng_cleanup(output);
    ASSERT_EQ(0, writepng_init(output));
    writepng_cleanup(output);
    writepng_cleanup(output);
    EXPECT_EQ(nullptr, output.png);
    EXPECT_EQ(nullptr, output.info);
}

TEST_F(WritePngStepsTest, AnErrorWithNowhereToGoEndsTheProcessWithNinetyNine) {
    FaultyLibraries faults;
    faults->noWriteContext = true;
    output.file = nullptr;
    EXPECT_EXIT(writepng_init(output), testing::ExitedWithCode(99),
                "^writepng libpng error: Write Error\n"
                "writepng severe error:  jmpbuf not recoverable; terminating.\n$");
}

TEST(WritePngVersionTest, LibpngsAndZlibsVersionsAreToldOnStandardError) {
    testing::internal::CaptureStderr();
    writepng_version_info();
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                MatchesRegex(" *Compiled with libpng 1\\.6\\.[0-9]+; using libpng 1\\.6\\.[0-9]+\\.\n"
                             " *Compiled with zlib 1\\.[0-9.]+; using zlib 1\\.[0-9.]+\\.\n"));
}
