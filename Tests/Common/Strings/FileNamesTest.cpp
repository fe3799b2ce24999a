#include "Vl/Common/Strings/FileNames.h"

#include <gmock/gmock.h>

namespace {

TEST(FileNamesTest, TemporaryFilesBeginWithDummyFile) {
    EXPECT_STREQ(Valen::GetTemporaryFilePrefix(), "dummyFile");
}

struct Shortened {
    const char* path;
    const char* name;
};

class ExtractFileNameTest : public testing::TestWithParam<Shortened> {};

TEST_P(ExtractFileNameTest, KeepsTheNameAndShortensItsExtension) {
    EXPECT_EQ(Valen::extractFileName(GetParam().path, 0), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Paths, ExtractFileNameTest,
                         testing::Values(Shortened{"/src/Common/Thread.cpp", "ThreadC"},  //
                                         Shortened{"Thread.cpp", "ThreadC"},              //
                                         Shortened{"src/Thread.h", "ThreadH"},            //
                                         Shortened{"C:\\src\\Thread.cpp", "ThreadC"},     //
                                         Shortened{"a\\b/c\\Thread.cpp", "c\\ThreadC"},   //
                                         Shortened{"Thread.hpp", "ThreadHpp"},            //
                                         Shortened{"Thread.cpp.bak", "ThreadC.bak"},      //
                                         Shortened{"a.cpp/Makefile", "Makefile"},         //
                                         Shortened{"Thread.c", "Thread.c"},               //
                                         Shortened{"src/", ""},                           //
                                         Shortened{"", ""},                               //
                                         Shortened{nullptr, ""}));

TEST(FileNamesTest, TheLineNumberDoesNotMatter) {
    for (const int line : {-1, 1, 3, 100000}) {
        EXPECT_EQ(Valen::extractFileName("src/Thread.cpp", line), "ThreadC");
    }
}

TEST(FileNamesTest, APathIsDirectorySlashName) {
    std::string path = "old";
    Valen::MakePath("/opt/pattern", "Font.ttf", path);
    EXPECT_EQ(path, "/opt/pattern/Font.ttf");
    Valen::MakePath("", "", path);
    EXPECT_EQ(path, "/");
    Valen::MakePath("a/", "/b", path);
    EXPECT_EQ(path, "a///b");
}

TEST(FileNamesTest, APathMayGrowFromItself) {
    std::string path = "/dev";
    Valen::MakePath(path.c_str(), "i2c-1", path);
    EXPECT_EQ(path, "/dev/i2c-1");
}

}  // namespace
