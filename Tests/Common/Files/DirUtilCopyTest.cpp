// DirUtil: single files, copied and read.
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "Tests/Common/Files/LoggedWorld.h"
#include "Vl/Common/Files/DirUtil.h"

// With a sanitizer, too, memory that is not there is a null pointer.
extern "C" const char* __asan_default_options() {  // NOLINT: the sanitizers' own names
    return "allocator_may_return_null=1";
}
extern "C" const char* __tsan_default_options() {  // NOLINT
    return "allocator_may_return_null=1";
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::DirUtil;

class DirUtilCopyTest : public LoggedWorld {
protected:
    static std::string bytes(std::size_t count) {
        std::string text(count, '\0');
        for (std::size_t i = 0; i < count; ++i) {
            text[i] = static_cast<char>(i * 131 >> 3);
        }
        return text;
    }
};

TEST_F(DirUtilCopyTest, ACopyHasEveryByte) {
    for (const std::size_t size : {0U, 1U, 1023U, 1024U, 1025U, 2048U, 100'000U}) {
        world.write("/tmp/from", bytes(size));
        EXPECT_TRUE(DirUtil::Copy("/tmp/from", "/tmp/to")) << size;
        EXPECT_EQ(bytes(size), world.read("/tmp/to")) << size;
    }
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(DirUtilCopyTest, ACopyHasTheModeWhateverTheMaskAndTheTargetSay) {
    world.write("/tmp/from", "x");
    const mode_t mask = umask(0077);
    for (const char* mode : {"4755", "444", "666", "0"}) {
        chmod("/tmp/from", static_cast<mode_t>(std::strtol(mode, nullptr, 8)));
        EXPECT_TRUE(DirUtil::Copy("/tmp/from", "/tmp/to")) << mode;
        EXPECT_EQ(mode, outputOf("stat -c %a /tmp/to"));
    }
    umask(mask);
}

TEST_F(DirUtilCopyTest, ALongerTargetIsReplaced) {
    world.write("/tmp/from", "short");
    world.write("/tmp/to", bytes(5000));
    EXPECT_TRUE(DirUtil::Copy("/tmp/from", "/tmp/to"));
    EXPECT_EQ("short", world.read("/tmp/to"));
}

TEST_F(DirUtilCopyTest, AFileIsNotCopiedOntoItself) {
    world.write("/tmp/file", "x");
    std::filesystem::create_symlink("file", "/tmp/link");
    EXPECT_FALSE(DirUtil::Copy("/tmp/file", "/tmp/file"));
    EXPECT_FALSE(DirUtil::Copy("/tmp/file", "/tmp/link"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("/tmp/file & /tmp/file are the same file"),
                                      debugLine("/tmp/file & /tmp/link are the same file")));
    EXPECT_EQ("x", world.read("/tmp/file"));
}

TEST_F(DirUtilCopyTest, EqualInodeNumbersOnTwoFileSystemsAreRefusedOnPurpose) {
    for (const char* directory : {"/tmp/one", "/tmp/two"}) {
        mountEmpty(directory);
        world.write(std::string(directory) + "/file", directory);
    }
    ASSERT_EQ(outputOf("stat -c %i /tmp/one/file"), outputOf("stat -c %i /tmp/two/file"));
    EXPECT_FALSE(DirUtil::Copy("/tmp/one/file", "/tmp/two/file"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("/tmp/one/file & /tmp/two/file are the same file")));
    EXPECT_EQ("/tmp/two", world.read("/tmp/two/file"));
}

TEST_F(DirUtilCopyTest, WhatCannotBeOpenedIsNamed) {
    world.write("/tmp/file", "x");
    EXPECT_FALSE(DirUtil::Copy("/tmp/missing", "/tmp/to"));
    EXPECT_FALSE(std::filesystem::exists("/tmp/to"));
    EXPECT_FALSE(DirUtil::Copy("/tmp/file", "/tmp/missing/to"));
    EXPECT_FALSE(DirUtil::Copy("/tmp/file", "/tmp"));
    EXPECT_FALSE(DirUtil::Copy("", ""));
    EXPECT_THAT(logged(), ElementsAre(debugLine("could not open f1 /tmp/missing"),
                                      debugLine("could not open f2 /tmp/missing/to"),
                                      debugLine("could not open f2 /tmp"), debugLine("could not open f1 ")));
}

TEST_F(DirUtilCopyTest, AFileThatCannotBeExaminedIsNamed) {
    world.write("/tmp/from", "x");
    EXPECT_TRUE(holdsInChild([] {
        denySystemCalls({SYS_fstat, SYS_newfstatat, SYS_statx}, EIO);
        return !DirUtil::Copy("/tmp/from", "/tmp/to");
    }));
    EXPECT_THAT(logged(), ElementsAre(debugLine("fstat failed for /tmp/from")));
}

TEST_F(DirUtilCopyTest, AFullFileSystemIsNoticedAndThePartStays) {
    world.write("/tmp/from", bytes(100'000));
    mountEmpty("/tmp/small", "size=16k");
    EXPECT_FALSE(DirUtil::Copy("/tmp/from", "/tmp/small/to"));
    EXPECT_THAT(logged(), ElementsAre(debugLine("could not write enough bytes")));
    const std::string part = world.read("/tmp/small/to");
    EXPECT_LT(0U, part.size());
    EXPECT_TRUE(bytes(100'000).starts_with(part));
}

TEST_F(DirUtilCopyTest, AFailedReadIsNoEndOfTheFile) {
    EXPECT_FALSE(DirUtil::Copy("/tmp", "/tmp/to"));  // a directory opens, but does not read
    EXPECT_THAT(logged(), ElementsAre(debugLine("could not write enough bytes")));
}

TEST_F(DirUtilCopyTest, AModeThatCannotBeSetIsAFailure) {
    world.write("/tmp/from", "copy");
    EXPECT_TRUE(holdsInChild([] { return !DirUtil::Copy("/tmp/from", "/proc/self/comm"); }));
    EXPECT_THAT(logged(), ElementsAre(debugLine("could not chmod: Operation not permitted")));
}

TEST_F(DirUtilCopyTest, NothingIsLeftOpen) {
    world.write("/tmp/from", "x");
    const std::size_t before = openDescriptors();
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(DirUtil::Copy("/tmp/from", "/tmp/to"));
        EXPECT_FALSE(DirUtil::Copy("/tmp/from", "/tmp"));
        logged();
    }
    EXPECT_EQ(before, openDescriptors());
}

/// Where readFileToBuffer puts its results; untouched until it succeeds.
struct Contents {
    bool read(const std::string& path) { return DirUtil::readFileToBuffer(path, &buffer, &size); }
    bool untouched() const { return buffer == &marker && size == 4711; }

    unsigned char marker = 0;
    unsigned char* buffer = &marker;
    unsigned int size = 4711;
};

class ReadFileToBufferTest : public DirUtilCopyTest {};

TEST_F(ReadFileToBufferTest, TheCallerGetsEveryByteAndFreesThem) {
    for (const std::size_t size : {1U, 4096U, 70'000U}) {
        world.write("/tmp/file", bytes(size));
        Contents contents;
        ASSERT_TRUE(contents.read("/tmp/file"));
        EXPECT_EQ(bytes(size), std::string(reinterpret_cast<char*>(contents.buffer), contents.size));
        std::free(contents.buffer);
    }
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(ReadFileToBufferTest, ResultsNeedAPlace) {
    Contents contents;
    EXPECT_FALSE(DirUtil::readFileToBuffer("/tmp/file", nullptr, &contents.size));
    EXPECT_FALSE(DirUtil::readFileToBuffer("/tmp/file", &contents.buffer, nullptr));
    EXPECT_THAT(logged(),
                ElementsAre(errorLine("Parameters incorrect."), errorLine("Parameters incorrect.")));
    EXPECT_TRUE(contents.untouched());
}

TEST_F(ReadFileToBufferTest, AMissingFileIsANotice) {
    Contents contents;
    EXPECT_FALSE(contents.read("/tmp/missing"));
    EXPECT_THAT(logged(), ElementsAre(noticeLine("Failed to open the file /tmp/missing for reading.")));
    EXPECT_TRUE(contents.untouched());
}

TEST_F(ReadFileToBufferTest, AnEmptyFileContainsNoData) {
    world.write("/tmp/empty", "");
    Contents contents;
    EXPECT_FALSE(contents.read("/tmp/empty"));
    EXPECT_FALSE(contents.read("/proc/version"));  // has text, but announces none
    EXPECT_THAT(logged(), ElementsAre(errorLine("The file /tmp/empty contains no data."),
                                      errorLine("The file /proc/version contains no data.")));
    EXPECT_TRUE(contents.untouched());
}

TEST_F(ReadFileToBufferTest, WhatIsNoFileIsAnError) {
    Contents contents;
    EXPECT_FALSE(contents.read("/tmp"));
    EXPECT_THAT(logged(), ElementsAre(errorLine("Error reading data from the file /tmp.")));
    EXPECT_TRUE(contents.untouched());
}

TEST_F(ReadFileToBufferTest, AFileShorterThanAnnouncedIsAnError) {
    const std::string path = "/sys/devices/system/cpu/online";  // sysfs announces a page
    ASSERT_EQ("4096", outputOf("stat -c %s " + path));
    Contents contents;
    EXPECT_FALSE(contents.read(path));
    EXPECT_THAT(logged(), ElementsAre(errorLine("Error reading data from the file " + path + ".")));
    EXPECT_TRUE(contents.untouched());
}

TEST_F(ReadFileToBufferTest, AFileOfMoreThan32BitsGetsNoBufferInsteadOfAShortOne) {
    world.write("/tmp/large", "");
    for (const std::uintmax_t size : {0x1'0000'0000U, 0x1'0000'0001U}) {
        std::filesystem::resize_file("/tmp/large", size);
        Contents contents;
        EXPECT_FALSE(contents.read("/tmp/large"));
        EXPECT_THAT(logged(), ElementsAre(errorLine("Error allocating the buffer.")));
        EXPECT_TRUE(contents.untouched());
    }
}

TEST_F(ReadFileToBufferTest, WithoutMemoryThereIsNoBuffer) {
    world.write("/tmp/large", "");
    std::filesystem::resize_file("/tmp/large", 3'000'000'000);
    EXPECT_TRUE(holdsInChild([] {
        const rlimit limit{1'000'000'000, 1'000'000'000};
        setrlimit(RLIMIT_AS, &limit);
        Contents contents;
        return !contents.read("/tmp/large") && contents.untouched();
    }));
    EXPECT_THAT(logged(), ElementsAre(errorLine("Error allocating the buffer.")));
}

}  // namespace
