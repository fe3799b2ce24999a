#include "Tools/overlayview/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <system_error>

#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/overlayview/OverlayBytes.h"

namespace {

using overlayview::readFile;
using overlayview::writeFile;

TEST(OverlayFilesTest, WhatIsWrittenIsRead) {
    const support::TemporaryDirectory directory;
    const std::string path = directory.file("f");
    writeFile(path, overlays::whiteHundred());
    EXPECT_EQ(overlays::whiteHundred(), readFile(path));
    writeFile(path, overlays::bytes({1}));
    EXPECT_EQ(overlays::bytes({1}), readFile(path)) << "replaced";
    writeFile(path, {});
    EXPECT_TRUE(readFile(path).empty());
}

TEST(OverlayFilesTest, FailuresNameTheFile) {
    try {
        readFile("/no/such/file");
        ADD_FAILURE() << "there is no such file";
    } catch (const std::system_error& error) {
        EXPECT_EQ(std::errc::no_such_file_or_directory, error.code());
        EXPECT_STREQ("/no/such/file: No such file or directory", error.what());
    }
    EXPECT_THROW(readFile("/"), std::system_error);
    EXPECT_THROW(writeFile("/no/such/file", {}), std::system_error);
    EXPECT_THROW(writeFile("/dev/full", overlays::bytes({1})), std::system_error);
}

TEST(OverlayFilesTest, AFileThatIsTooLargeIsNotReadToItsEnd) {
    const support::TemporaryDirectory directory;
    writeFile(directory.file("f"), {});
    std::filesystem::resize_file(directory.file("f"), 64U * 1024 * 1024);
    EXPECT_EQ(64U * 1024 * 1024, readFile(directory.file("f")).size());
    std::filesystem::resize_file(directory.file("f"), 64U * 1024 * 1024 + 1);
    for (const std::string& path : {directory.file("f"), std::string("/dev/zero")}) {
        try {
            readFile(path);
            ADD_FAILURE() << path;
        } catch (const std::system_error& error) {
            EXPECT_EQ(std::errc::file_too_large, error.code());
        }
    }
}

}  // namespace
