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
