#include "Vl/Graphics/Images/Icon.h"

#include <gtest/gtest.h>

#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace {

class IconTest : public testing::Test {
protected:
    std::string writeIcon(const std::string& name, uint32_t width, uint32_t height) {
        writePngFile(directory.file(name), {.width = width,
                                            .height = height,
                                            .colourType = PngFile::Grey,
                                            .samples = std::vector<uint8_t>(size_t{width} * height)});
        return directory.file(name);
    }

    support::TemporaryDirectory directory;
    Icon icon;
};

}  // namespace

TEST_F(IconTest, NamesNoFileAtFirst) {
    EXPECT_EQ(nullptr, icon.getPath());
    EXPECT_EQ(0, icon.getWidth());
    EXPECT_EQ(0, icon.getHeight());
}

TEST_F(IconTest, KeepsItsOwnCopyOfThePath) {
    std::string path = writeIcon("a.png", 3, 2);
    const std::string same = path;
    icon.Load(path.c_str());
    path.assign(path.size(), 'x');
    EXPECT_STREQ(same.c_str(), icon.getPath());
}

TEST_F(IconTest, ReadsItsSizeWhenItIsFirstAsked) {
    icon.Load(writeIcon("a.png", 3, 2).c_str());
    EXPECT_EQ(3, icon.getWidth());
    EXPECT_EQ(2, icon.getHeight());
}

TEST_F(IconTest, AnotherPictureHasItsOwnSize) {
    icon.Load(writeIcon("a.png", 3, 2).c_str());
    EXPECT_EQ(3, icon.getWidth());
    icon.Load(writeIcon("b.png", 5, 7).c_str());
    EXPECT_EQ(5, icon.getWidth());
    EXPECT_EQ(7, icon.getHeight());
}

TEST_F(IconTest, LoadDimSeesAPictureThatHasChanged) {
    icon.Load(writeIcon("a.png", 3, 2).c_str());
    EXPECT_EQ(3, icon.getWidth());
    writeIcon("a.png", 9, 8);
    EXPECT_EQ(3, icon.getWidth());
    icon.LoadDim();
    EXPECT_EQ(9, icon.getWidth());
    EXPECT_EQ(8, icon.getHeight());
}

TEST_F(IconTest, LoadDimLeavesZeroWhenTheFileIsMissingOrNotPng) {
    icon.Load(writeIcon("a.png", 3, 2).c_str());
    icon.LoadDim();
    writeBytes(directory.file("a.png"), "no picture at all");
    icon.LoadDim();
    EXPECT_EQ(0, icon.getWidth());
    EXPECT_EQ(0, icon.getHeight());
    icon.Load(directory.file("none.png").c_str());
    EXPECT_EQ(0, icon.getHeight());
}

TEST_F(IconTest, TakesItsOwnPathAgain) {
    const std::string path = writeIcon("a.png", 3, 2);
    icon.Load(path.c_str());
    icon.Load(icon.getPath());
    EXPECT_STREQ(path.c_str(), icon.getPath());
}

TEST_F(IconTest, NullNamesNoFile) {
    icon.Load(writeIcon("a.png", 3, 2).c_str());
    icon.Load(nullptr);
    EXPECT_EQ(nullptr, icon.getPath());
    EXPECT_EQ(0, icon.getWidth());
}

TEST_F(IconTest, OnlyTheHeaderIsNeededForTheSize) {
    const std::string path = writeIcon("a.png", 30, 20);
    writeBytes(path, readBytes(path).substr(0, 45));
    icon.Load(path.c_str());
    EXPECT_EQ(30, icon.getWidth());
    EXPECT_EQ(20, icon.getHeight());
}

TEST_F(IconTest, TheSizeIsKnownAlsoOfPicturesThatCannotBeDrawn) {
    writePngFile(directory.file("a.png"), {.width = 3,
                                           .height = 2,
                                           .colourType = PngFile::Grey,
                                           .bitDepth = 16,
                                           .samples = std::vector<uint8_t>(12)});
    icon.Load(directory.file("a.png").c_str());
    EXPECT_EQ(3, icon.getWidth());
    EXPECT_EQ(2, icon.getHeight());
    writePngFile(
        directory.file("b.png"),
        {.width = 5, .height = 4, .colourType = PngFile::Palette, .samples = std::vector<uint8_t>(20)});
    icon.Load(directory.file("b.png").c_str());
    EXPECT_EQ(5, icon.getWidth());
    EXPECT_EQ(4, icon.getHeight());
}

TEST_F(IconTest, AHeaderThatIsCutAnywhereLeavesZero) {
    const std::string path = writeIcon("a.png", 30, 20);
    const std::string whole = readBytes(path);
    for (size_t length = 0; length < 33; ++length) {  // the signature and the header chunk
        writeBytes(path, whole.substr(0, length));
        icon.Load(path.c_str());
        EXPECT_EQ(0, icon.getWidth()) << length;
        EXPECT_EQ(0, icon.getHeight()) << length;
    }
}

TEST_F(IconTest, AHeaderWithAnyByteDamagedLeavesZero) {
    const std::string path = writeIcon("a.png", 30, 20);
    const std::string whole = readBytes(path);
    for (size_t place = 0; place < 33; ++place) {
        std::string damaged = whole;
        damaged[place] = static_cast<char>(damaged[place] ^ 1);
        writeBytes(path, damaged);
        icon.Load(path.c_str());
        EXPECT_EQ(0, icon.getWidth()) << place;
        EXPECT_EQ(0, icon.getHeight()) << place;
    }
}
