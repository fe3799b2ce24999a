#include <gtest/gtest.h>

#include <random>

#include "Tests/Graphics/OverlayFile.h"
#include "Tests/Graphics/PlainOverlay.h"

namespace {

/// The run lengths of a picture, without the header.
std::string body(const YUVBitmap& bitmap, bool interlaced = false) {
    const OverlayFile file;
    EXPECT_EQ(0, bitmap.SaveRLE(file, 0, interlaced));
    const std::string bytes = file.bytes();
    EXPECT_EQ(0U, (bytes.size() - 12) % 128);
    return hexOf(bytes.substr(12));
}

/// The one word that one pixel makes.
std::string wordOf(uint32_t pixel) {
    YUVBitmap bitmap(1, 1);
    paint(bitmap, {pixel});
    return body(bitmap).substr(0, 8);
}

YUVBitmap& filled(YUVBitmap& bitmap, uint32_t word) {
    paint(bitmap, std::vector<uint32_t>(static_cast<size_t>(bitmap.getBuffer().count()), word));
    return bitmap;
}

// Words whose codes are 1, 2 and 3.
constexpr uint32_t kA = 16;
constexpr uint32_t kB = 32;
constexpr uint32_t kC = 48;

}  // namespace

TEST(SaveRleTest, OneColourOfAHundredPixelsIsTwoWordsPaddedTo128Bytes) {
    YUVBitmap bitmap(10, 10);
    bitmap.FillRect(10, 10, 0x80ffffff);
    const OverlayFile file;
    EXPECT_EQ(0, bitmap.SaveRLE(file, 0x12345678, false));
    EXPECT_EQ(hexOf(file.bytes()),
              "ffffffff 12345678 00000020 01927610 00000000 00000000 00000000 00000000\n"
              "*\n"
              "00000000 00000000 00000000\n");
    EXPECT_EQ(140U, file.bytes().size());
}

TEST(SaveRleTest, TheIdentifierIsCutTo32Bits) {
    const OverlayFile file;
    EXPECT_EQ(0, YUVBitmap(1, 1).SaveRLE(file, static_cast<unsigned long>(0x12fedcba98), false));
    EXPECT_EQ("fedcba98", hexOf(file.bytes()).substr(9, 8));
}

TEST(SaveRleTest, EveryFieldHasItsPlaceInTheCode) {
    EXPECT_EQ("00040001", wordOf(overlayWord(0, 0, 16, 0)));
    EXPECT_EQ("00040010", wordOf(overlayWord(0, 0, 256, 0)));
    EXPECT_EQ("00040020", wordOf(overlayWord(0, 16, 0, 0)));
    EXPECT_EQ("00040200", wordOf(overlayWord(0, 256, 0, 0)));
    EXPECT_EQ("00040400", wordOf(overlayWord(32, 0, 0, 0)));
    EXPECT_EQ("00044000", wordOf(overlayWord(512, 0, 0, 0)));
    EXPECT_EQ("00048000", wordOf(overlayWord(0, 0, 0, 1)));
    EXPECT_EQ("00060000", wordOf(overlayWord(0, 0, 0, 4)));
    EXPECT_EQ("00078000", wordOf(overlayWord(0, 0, 0, 7)));
}

TEST(SaveRleTest, EveryFieldIsRoundedByItself) {
    EXPECT_EQ("00040000", wordOf(overlayWord(15, 7, 7, 0)));
    EXPECT_EQ("00040001", wordOf(overlayWord(15, 7, 8, 0)));
    EXPECT_EQ("00040020", wordOf(overlayWord(15, 8, 7, 0)));
    EXPECT_EQ("00040400", wordOf(overlayWord(16, 7, 7, 0)));
    EXPECT_EQ("00047fff", wordOf(overlayWord(1007, 503, 503, 0)));
}

TEST(SaveRleTest, TheVeryLargestValuesComeOutAsZeroOnPurpose) {
    EXPECT_EQ("00047fe0", wordOf(overlayWord(1007, 503, 504, 0)));
    EXPECT_EQ("00047c1f", wordOf(overlayWord(1007, 504, 503, 0)));
    EXPECT_EQ("000403ff", wordOf(overlayWord(1008, 503, 503, 0)));
    EXPECT_EQ("00040000", wordOf(overlayWord(1023, 511, 511, 0)));
}

TEST(SaveRleTest, TheFlagPlaysNoPart) {
    YUVBitmap bitmap(4, 1);
    paint(bitmap, {kA, kA | 0x80000000, kA, kA | 0x80000000});
    EXPECT_EQ(body(bitmap).substr(0, 17), "00100001 00000000");
}

TEST(SaveRleTest, DifferentPixelsOfOneCodeAreOneRun) {
    YUVBitmap bitmap(4, 1);
    paint(bitmap, {overlayWord(17, 8, 8, 2), overlayWord(47, 23, 23, 2), overlayWord(16, 9, 9, 2), kA});
    EXPECT_EQ(body(bitmap).substr(0, 26), "000d0421 00040001 00000000");
}

TEST(SaveRleTest, ARunIsAtMost16383Long) {
    const std::pair<int, std::string> runs[] = {{16382, "fff80001 00000000 00000000 00000000"},
                                                {16383, "fffc0001 00000000 00000000 00000000"},
                                                {16384, "fffc0001 00040001 00000000 00000000"},
                                                {32766, "fffc0001 fffc0001 00000000 00000000"},
                                                {32767, "fffc0001 fffc0001 00040001 00000000"}};
    for (const auto& [pixels, words] : runs) {
        YUVBitmap bitmap(pixels, 1);
        EXPECT_EQ(body(filled(bitmap, kA)).substr(0, 35), words) << pixels;
    }
}

TEST(SaveRleTest, ALongRunMayEndInNoise) {
    YUVBitmap bitmap(200, 500);
    std::vector<uint32_t> words(100000, kA);
    for (size_t i = 40000; i < words.size(); ++i) {
        words[i] = i % 2 == 0 ? kB : kC;
    }
    paint(bitmap, words);
    const OverlayFile file;
    EXPECT_EQ(0, bitmap.SaveRLE(file, 1, false));
    EXPECT_EQ(PlainOverlay(bitmap).runLengths(1, false), file.bytes());
}

TEST(SaveRleTest, RunsGoOnOverTheEndOfARow) {
    YUVBitmap bitmap(3, 2);
    paint(bitmap, {kA, kB, kB,  //
                   kB, kB, kC});
    EXPECT_EQ(body(bitmap).substr(0, 35), "00040001 00100002 00040003 00000000");
}

TEST(SaveRleTest, InterlacedRowsAreWrittenEvenOnesFirst) {
    YUVBitmap bitmap(2, 3);
    paint(bitmap, {kA, kA,  //
                   kB, kB,  //
                   kC, kC});
    EXPECT_EQ(body(bitmap, true).substr(0, 35), "00080001 00080003 00080002 00000000");
    EXPECT_EQ(body(bitmap, false).substr(0, 35), "00080001 00080002 00080003 00000000");
}

TEST(SaveRleTest, RunsGoOnFromTheEvenToTheOddRows) {
    YUVBitmap bitmap(2, 4);
    paint(bitmap, {kA, kA,  //
                   kB, kC,  //
                   kA, kB,  //
                   kC, kC});
    EXPECT_EQ(body(bitmap, true).substr(0, 35), "000c0001 00080002 000c0003 00000000");
}

TEST(SaveRleTest, ABodyOf128BytesIsNotPadded) {
    YUVBitmap bitmap(31, 1);
    std::vector<uint32_t> words(31, kA);
    for (size_t i = 1; i < words.size(); i += 2) {
        words[i] = kB;
    }
    paint(bitmap, words);
    const OverlayFile file;
    EXPECT_EQ(0, bitmap.SaveRLE(file, 0, false));
    EXPECT_EQ(140U, file.bytes().size());
    EXPECT_EQ("00040001 00000000\n", hexOf(file.bytes().substr(132)));

    YUVBitmap longer(32, 1);
    words.push_back(kC);
    paint(longer, words);
    EXPECT_EQ(0, longer.SaveRLE(file, 0, false));
    EXPECT_EQ(268U, file.bytes().size());
    EXPECT_EQ("00000040", hexOf(file.bytes()).substr(18, 8));
}

TEST(SaveRleTest, AnEmptyBitmapIsTheEndWordAlone) {
    const OverlayFile file;
    EXPECT_EQ(0, YUVBitmap().SaveRLE(file, 5, true));
    EXPECT_EQ(contained(5, std::string(4, '\0')), file.bytes());
}

TEST(SaveRleTest, WhereTheFileStandsPlaysNoPart) {
    const OverlayFile file;
    std::fputs("something else, but shorter", file);
    EXPECT_EQ(0, YUVBitmap(1, 1).SaveRLE(file, 5, false));
    EXPECT_EQ(PlainOverlay(YUVBitmap(1, 1)).runLengths(5, false), file.bytes());
}

TEST(SaveRleTest, RandomPicturesAreCodedAsPixelByPixel) {
    std::mt19937 random(24);
    for (int picture = 0; picture < 600; ++picture) {
        const auto width = static_cast<int>(1 + random() % (picture % 3 == 0 ? 300 : 70));
        YUVBitmap bitmap(width, static_cast<int>(1 + random() % 9));
        std::vector<uint32_t> words(static_cast<size_t>(bitmap.getBuffer().count()));
        const uint32_t longest = 1U << picture % 9;                        // from noise to areas
        const uint32_t mask = picture % 2 == 0 ? 0xffffffff : 0x80040e0f;  // many or few codes
        size_t left = 0;
        uint32_t word = 0;
        for (auto& pixel : words) {
            if (left == 0) {
                left = 1 + random() % longest;
                word = static_cast<uint32_t>(random()) & mask;
            }
            pixel = word;
            --left;
        }
        paint(bitmap, words);
        for (const bool interlaced : {false, true}) {
            const OverlayFile file;
            ASSERT_EQ(0, bitmap.SaveRLE(file, 7, interlaced));
            ASSERT_EQ(hexOf(PlainOverlay(bitmap).runLengths(7, interlaced)), hexOf(file.bytes()))
                << picture << (interlaced ? " interlaced" : "");
        }
    }
}
