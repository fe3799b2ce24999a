#include "Vl/Graphics/Images/WritePng.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <random>

#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Images/WritePngSteps.h"

using testing::ElementsAreArray;
using testing::ExitedWithCode;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr int kWidth = 64;
constexpr int kHeight = 32;

/// Nothing that could be compressed: 8 KiB stay 8 KiB.
std::vector<uint8_t> noise() {
    std::vector<uint8_t> samples(kWidth * kHeight * 4);
    std::minstd_rand random;
    for (uint8_t& sample : samples) {
        sample = static_cast<uint8_t>(random() >> 8);
    }
    return samples;
}

class WritePngTest : public testing::Test {
protected:
    void write(const std::string& to) { write_png(samples.data(), kWidth, kHeight, to.c_str()); }

    support::TemporaryDirectory directory;
    std::string path = directory.file("out.png");
    std::vector<uint8_t> samples = noise();
};

using WritePngDeathTest = WritePngTest;

}  // namespace

TEST_F(WritePngTest, WritesThePixels) {
    write(path);
    const PngPixels read = readPngFile(path);
    EXPECT_EQ(64U, read.width);
    EXPECT_EQ(32U, read.height);
    EXPECT_THAT(read.samples, ElementsAreArray(samples));
}

TEST_F(WritePngTest, WritesHeaderImageAndEndAndNothingElse) {
    write_png(samples.data(), 1, 1, path.c_str());
    const std::string bytes = readBytes(path);
    std::string chunks;
    for (size_t at = 8; at + 8 <= bytes.size();) {
        const auto byte = [&](size_t i) { return size_t{static_cast<uint8_t>(bytes[at + i])}; };
        chunks += bytes.substr(at + 4, 4) + ' ';
        at += 12 + (byte(0) << 24 | byte(1) << 16 | byte(2) << 8 | byte(3));
    }
    EXPECT_EQ("IHDR IDAT IEND ", chunks);
}

TEST_F(WritePngTest, ReplacesAFile) {
    writeBytes(path, std::string(100000, 'x'));
    write(path);
    EXPECT_GT(20000U, readBytes(path).size());
    EXPECT_THAT(readPngFile(path).samples, ElementsAreArray(samples));
}

TEST_F(WritePngTest, TheScreensGammaHasNoEffectOnPurpose) {
    write(path);
    const std::string without = readBytes(path);
    for (const char* gamma : {"2.2", "", "-1", "nonsense", "1e999"}) {
        setenv("SCREEN_GAMMA", gamma, 1);
        write(path);
        EXPECT_EQ(without, readBytes(path)) << gamma;
    }
    unsetenv("SCREEN_GAMMA");
}

TEST_F(WritePngDeathTest, APathThatCannotBeOpenedIsTwoAtTheFirstBytes) {
    const char* message =
        "^writepng libpng error: Write Error\nwpng:  libpng initialization problem \\(longjmp\\)\n$";
    EXPECT_EXIT(write(directory.file("none/out.png")), ExitedWithCode(2), message);
    EXPECT_EXIT(write(""), ExitedWithCode(2), message);
    EXPECT_EXIT(write_png(samples.data(), kWidth, kHeight, nullptr), ExitedWithCode(2), message);
}

TEST_F(WritePngDeathTest, ASizeOfNothingIsTwo) {
    for (const auto& [width, height] :
         {std::pair(0, 0), std::pair(0, 1), std::pair(1, 0), std::pair(-1, -1)}) {
        EXPECT_EXIT(write_png(samples.data(), width, height, path.c_str()), ExitedWithCode(2),
                    "wpng:  libpng initialization problem \\(longjmp\\)\n$");
    }
}

TEST_F(WritePngDeathTest, MissingStructuresAreFour) {
    FaultyLibraries faults;
    faults->createWriteStruct = true;
    EXPECT_EXIT(write(path), ExitedWithCode(4), "^wpng:  insufficient memory\n$");
    faults->createWriteStruct = false;
    faults->createInfoStruct = true;
    EXPECT_EXIT(write(path), ExitedWithCode(4), "^wpng:  insufficient memory\n$");
}

TEST_F(WritePngDeathTest, AnotherKindOfPixelsIsEleven) {
    PngOutput output;
    output.pnmType = 5;
    EXPECT_EXIT(write_png(samples.data(), output), ExitedWithCode(11),
                "^wpng:  internal logic error \\(unexpected PNM type\\)\n$");
}

TEST_F(WritePngDeathTest, AStatusThatNobodyKnowsIsTheExitStatus) {
    FaultyLibraries faults;
    faults->writeInitStatus = 77;
    EXPECT_EXIT(write(path), ExitedWithCode(77), "^wpng:  unknown writepng_init\\(\\) error\n$");
}

TEST_F(WritePngDeathTest, ARowThatADiskDoesNotTakeIsTwoWithTheNumberOfRowsLeft) {
    // The C library holds a block back, so the header gets through and some rows in.
    EXPECT_EXIT(write("/dev/full"), ExitedWithCode(2),
                "^writepng libpng error: Write Error\n"
                "wpng:  libpng problem \\(longjmp\\) while writing row [0-9]+\n$");
}

TEST_F(WritePngDeathTest, TheRowThatFailsCountsAsNotYetWritten) {
    EXPECT_EXIT(write_png(samples.data(), kWidth * kHeight, 1, "/dev/full"), ExitedWithCode(2),
                "while writing row 1\n$");
}

TEST_F(WritePngDeathTest, AnEndThatADiskDoesNotTakeIsTwo) {
    EXPECT_EXIT(write_png(samples.data(), 1, 1, "/dev/full"), ExitedWithCode(2),
                "^writepng libpng error: Write Error\nwpng:  error on final libpng call\n$");
}

TEST_F(WritePngTest, AnInterlacedImageIsWrittenToAFileThatStaysOpen) {
    PngOutput output;
    output.file = std::fopen(path.c_str(), "wb");
    output.width = kWidth;
    output.height = kHeight;
    output.interlaced = true;
    write_png(samples.data(), output);
    EXPECT_EQ(0, std::fclose(output.file));
    EXPECT_THAT(readPngFile(path).samples, ElementsAreArray(samples));
}

TEST_F(WritePngDeathTest, AnInterlacedImageThatADiskDoesNotTakeIsTwo) {
    PngOutput output;
    output.file = std::fopen("/dev/full", "wb");
    output.width = kWidth;
    output.height = kHeight;
    output.interlaced = true;
    EXPECT_EXIT(write_png(samples.data(), output), ExitedWithCode(2),
                "^writepng libpng error: Write Error\n"
                "wpng:  libpng problem \\(longjmp\\) while writing image data\n$");
    std::fclose(output.file);
}

TEST_F(WritePngDeathTest, NoMemoryForTheRowsOfAnInterlacedImageIsFour) {
    PngOutput output;
    output.file = std::fopen(path.c_str(), "wb");
    output.width = kWidth;
    output.height = kHeight;
    output.interlaced = true;
    const auto writeWithoutMemory = [&] {
        libraryFaults.arraysLeft = 0;
        write_png(samples.data(), output);
    };
    EXPECT_EXIT(writeWithoutMemory(), ExitedWithCode(4), "^wpng:  insufficient memory for image data\n$");
    std::fclose(output.file);
}

TEST_F(WritePngDeathTest, AnErrorWithNowhereToGoIsNinetyNine) {
    FaultyLibraries faults;
    faults->noWriteContext = true;
    EXPECT_EXIT(write_png(samples.data(), 0, 0, path.c_str()), ExitedWithCode(99),
                "writepng severe error:  jmpbuf not recoverable; terminating.\n$");
}
