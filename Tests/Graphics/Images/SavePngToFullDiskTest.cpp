// Bitmaps saved as PNG onto a disk that has no room for them.
#include <gtest/gtest.h>
#include <sys/mount.h>

#include <filesystem>
#include <random>

#include "Tests/Support/PrivateWorld.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"

namespace {

/// A disk of one page.
class SavePngToFullDiskDeathTest : public testing::Test {
protected:
    SavePngToFullDiskDeathTest() {
        support::PrivateWorld::makeDirectory("/tmp/disk");
        EXPECT_EQ(0, mount("none", "/tmp/disk", "tmpfs", 0, "size=4k"));
    }
    ~SavePngToFullDiskDeathTest() override { umount2("/tmp/disk", MNT_DETACH); }

    /// Colours that no compression makes small.
    static void drawNoise(RGB16Bitmap& bitmap) {
        std::minstd_rand random;
        for (int i = 0; i < bitmap.getBuffer().count(); ++i) {
            bitmap.getBuffer().setPixel(i, 0x80000000U | static_cast<uint32_t>(random() & 0xffffffU));
        }
    }

    support::PrivateWorld world;
};

}  // namespace

TEST_F(SavePngToFullDiskDeathTest, APictureThatDoesNotFitEndsTheProcessInTheMiddleOfItsRows) {
    RGB16Bitmap bitmap(64, 64);
    drawNoise(bitmap);
    EXPECT_EXIT(bitmap.SavePng("/tmp/disk/a.png"), testing::ExitedWithCode(2),
                "^writepng libpng error: Write Error\n"
                "wpng:  libpng problem \\(longjmp\\) while writing row [0-9]+\n$");
    EXPECT_EQ(4096U, std::filesystem::file_size("/tmp/disk/a.png"));
    EXPECT_FALSE(std::filesystem::exists("/tmp/disk/a.png_alp.png"));
}

TEST_F(SavePngToFullDiskDeathTest, ACompanionThatDoesNotFitEndsTheProcessWithItsLastBytes) {
    const RGB16Bitmap bitmap(1, 1);
    EXPECT_EXIT(bitmap.SavePng("/tmp/disk/a.png"), testing::ExitedWithCode(2),
                "^writepng libpng error: Write Error\nwpng:  error on final libpng call\n$");
    EXPECT_LT(0U, std::filesystem::file_size("/tmp/disk/a.png"));
    EXPECT_EQ(0U, std::filesystem::file_size("/tmp/disk/a.png_alp.png"));
}
