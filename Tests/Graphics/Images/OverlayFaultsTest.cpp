// What every overlay writer returns, and what the file then holds, when the file fails it.
#include <sys/mount.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>

#include "Tests/Graphics/OverlayFile.h"
#include "Tests/Graphics/PlainOverlay.h"
#include "Tests/Support/PrivateWorld.h"

namespace {

/// A FILE in memory that fails on demand.
struct FaultyFile {
    std::string bytes = {};
    int64_t position = 0;
    int64_t refusedSeek = -1;      // seeks to this offset fail
    int64_t writable = LLONG_MAX;  // as many bytes fit in all

    OpenFile open() {
        OpenFile file(
            fopencookie(this, "wb", {.read = nullptr, .write = write, .seek = seek, .close = nullptr}));
        std::setvbuf(file.get(), nullptr, _IOFBF, 64);
        return file;
    }

    static ssize_t write(void* cookie, const char* from, size_t size) {
        auto& file = *static_cast<FaultyFile*>(cookie);
        const auto count = static_cast<size_t>(std::min(static_cast<int64_t>(size), file.writable));
        if (count == 0) {
            errno = ENOSPC;
            return 0;
        }
        const auto at = static_cast<size_t>(file.position);
        file.bytes.resize(std::max(file.bytes.size(), at + count));
        file.bytes.replace(at, count, from, count);
        file.position += static_cast<int64_t>(count);
        file.writable -= static_cast<int64_t>(count);
        return static_cast<ssize_t>(count);
    }

    static int seek(void* cookie, off64_t* offset, int whence) {
        auto& file = *static_cast<FaultyFile*>(cookie);
        const int64_t from = whence == SEEK_SET   ? 0
                             : whence == SEEK_CUR ? file.position
                                                  : static_cast<int64_t>(file.bytes.size());
        if (from + *offset == file.refusedSeek && whence == SEEK_SET) {
            errno = EIO;
            return -1;
        }
        file.position = *offset = from + *offset;
        return 0;
    }
};

struct Writer {
    const char* name;
    int64_t firstSeek;
    int (*write)(const YUVBitmap&, FILE*);
};

YUVBitmap::FontParams firstOf(FILE* file) {
    return {.file = file, .column = 0, .row = 0, .charactersPerRow = 1, .id = 1};
}

const Writer kContainerWriters[] = {
    {"SaveRLE", 12, [](const YUVBitmap& bitmap, FILE* file) { return bitmap.SaveRLE(file, 1, false); }},
    {"SaveRLEInterlaced", 12,
     [](const YUVBitmap& bitmap, FILE* file) { return bitmap.SaveRLE(file, 1, true); }},
    {"savePattern", 12,
     [](const YUVBitmap& bitmap, FILE* file) { return bitmap.savePattern(file, 1, false); }},
    {"saveFont", 12, [](const YUVBitmap& bitmap, FILE* file) { return bitmap.saveFont(firstOf(file), 0); }},
    {"saveNumberFont", 12,
     [](const YUVBitmap& bitmap, FILE* file) { return bitmap.saveNumberFont(firstOf(file)); }},
};

const Writer kRawWriters[] = {
    {"saveFontRaw", 0,
     [](const YUVBitmap& bitmap, FILE* file) { return bitmap.saveFontRaw(firstOf(file), 0); }},
    {"saveFontAtOffset", 40,
     [](const YUVBitmap& bitmap, FILE* file) { return bitmap.saveFontAtOffset(firstOf(file), 0, 40); }},
    {"saveNumberFontRaw", 0,
     [](const YUVBitmap& bitmap, FILE* file) { return bitmap.saveNumberFontRaw(firstOf(file)); }},
    {"saveNumberFontAtOffset", 40,
     [](const YUVBitmap& bitmap, FILE* file) { return bitmap.saveNumberFontAtOffset(firstOf(file), 40); }},
};

std::string nameOf(const testing::TestParamInfo<Writer>& writer) {
    return writer.param.name;
}

class OverlayFaultsTest : public testing::TestWithParam<Writer> {
protected:
    /// 32 × 2000 pixels, each unlike its neighbours: more than 4096 bytes for every writer.
    OverlayFaultsTest() {
        std::vector<uint32_t> words(static_cast<size_t>(bitmap.getBuffer().count()));
        for (size_t i = 0; i < words.size(); ++i) {
            words[i] = overlayWord(i % 2 == 0 ? 400 : 800, 256, 256, 4);
        }
        paint(bitmap, words);
    }

    int writeTo(FILE* file) const { return GetParam().write(bitmap, file); }

    YUVBitmap bitmap{32, 2000};
};

/// Of the writers that write a header after the body.
class ContainerFaultsTest : public OverlayFaultsTest {};

INSTANTIATE_TEST_SUITE_P(Containers, OverlayFaultsTest, testing::ValuesIn(kContainerWriters), nameOf);
INSTANTIATE_TEST_SUITE_P(Raw, OverlayFaultsTest, testing::ValuesIn(kRawWriters), nameOf);
INSTANTIATE_TEST_SUITE_P(Containers, ContainerFaultsTest, testing::ValuesIn(kContainerWriters), nameOf);

/// A file system of one page, 4096 bytes, at "/tmp/small".
class SmallDiskOverlayTest : public testing::Test {
protected:
    SmallDiskOverlayTest() {
        support::PrivateWorld::makeDirectory("/tmp/small");
        if (mount("tmpfs", "/tmp/small", "tmpfs", 0, "size=4k") != 0) {
            throw std::runtime_error("cannot mount on /tmp/small");
        }
        file.reset(std::fopen("/tmp/small/overlay", "wb"));
    }

    static std::string bytes() { return bytesOfFile("/tmp/small/overlay"); }

    /// As many runs of one pixel each.
    static std::unique_ptr<YUVBitmap> noise(int runs) {
        auto bitmap = std::make_unique<YUVBitmap>(runs, 1);
        for (int i = 0; i < runs; ++i) {
            bitmap->getBuffer().pixels()[i] = overlayWord(i % 2 == 0 ? 400 : 800, 256, 256, 4);
        }
        return bitmap;
    }

    support::PrivateWorld world;
    OpenFile file;
};

const std::string kNoHeader(12, '\0');

}  // namespace

TEST_P(OverlayFaultsTest, NoFileIsRefused) {
    EXPECT_EQ(-3, writeTo(nullptr));
}

TEST_P(OverlayFaultsTest, APipeFailsTheFirstSeekAndGetsNothing) {
    std::array<int, 2> ends{};
    ASSERT_EQ(0, pipe(ends.data()));
    {
        const OpenFile file(fdopen(ends[1], "wb"));
        errno = 0;
        EXPECT_EQ(-1, writeTo(file.get()));
        EXPECT_EQ(ESPIPE, errno);
    }
    char byte;
    EXPECT_EQ(0, read(ends[0], &byte, 1));
    close(ends[0]);
}

TEST_P(OverlayFaultsTest, AFileOpenForReadingStaysAsItIs) {
    const support::PrivateWorld world;
    support::PrivateWorld::write("/tmp/pictures/overlay", "read me");
    const OpenFile file(std::fopen("/tmp/pictures/overlay", "rb"));
    EXPECT_EQ(-2, writeTo(file.get()));
    EXPECT_EQ("read me", support::PrivateWorld::read("/tmp/pictures/overlay"));
}

TEST_P(OverlayFaultsTest, ADeviceThatIsFullIsAFailedWrite) {
    const OpenFile file(std::fopen("/dev/full", "wb"));
    errno = 0;
    EXPECT_EQ(-2, writeTo(file.get()));
    EXPECT_EQ(ENOSPC, errno);
}

TEST_P(OverlayFaultsTest, AFailedFirstSeekIsToldAndNothingWritten) {
    FaultyFile faulty{.refusedSeek = GetParam().firstSeek};
    const OpenFile file = faulty.open();
    EXPECT_EQ(-1, writeTo(file.get()));
    EXPECT_EQ(EIO, errno);
    EXPECT_EQ("", faulty.bytes);
}

TEST_P(ContainerFaultsTest, AFailedSeekToTheHeaderIsToldAndTheBodyStays) {
    FaultyFile whole;
    EXPECT_EQ(0, writeTo(whole.open().get()));
    FaultyFile faulty{.refusedSeek = 0};
    EXPECT_EQ(-1, writeTo(faulty.open().get()));
    EXPECT_EQ(hexOf(kNoHeader + whole.bytes.substr(12)), hexOf(faulty.bytes));
}

TEST_P(ContainerFaultsTest, AShortHeaderIsToldAndTheBodyStays) {
    FaultyFile whole;
    EXPECT_EQ(0, writeTo(whole.open().get()));
    FaultyFile faulty{.writable = static_cast<int64_t>(whole.bytes.size()) - 1};
    EXPECT_EQ(-2, writeTo(faulty.open().get()));
    EXPECT_EQ(whole.bytes.substr(12), faulty.bytes.substr(12));
}

TEST_P(OverlayFaultsTest, EveryShortWriteIsToldAndWhatFittedStays) {
    FaultyFile whole;
    EXPECT_EQ(0, writeTo(whole.open().get()));
    const auto length = static_cast<int64_t>(whole.bytes.size());
    const std::array shortages = {int64_t{1}, length / 2, length - GetParam().firstSeek - 1};
    for (const int64_t writable : shortages) {
        FaultyFile faulty{.writable = writable};
        EXPECT_EQ(-2, writeTo(faulty.open().get())) << writable;
        EXPECT_EQ(hexOf(std::string(static_cast<size_t>(GetParam().firstSeek), '\0') +
                        whole.bytes.substr(static_cast<size_t>(GetParam().firstSeek),
                                           static_cast<size_t>(writable))),
                  hexOf(faulty.bytes))
            << writable;
    }
}

TEST_P(OverlayFaultsTest, ADiskThatBecomesFullIsAFailedWriteWithoutAHeader) {
    const support::PrivateWorld world;
    support::PrivateWorld::makeDirectory("/tmp/small");
    ASSERT_EQ(0, mount("tmpfs", "/tmp/small", "tmpfs", 0, "size=4k"));
    const OpenFile file(std::fopen("/tmp/small/overlay", "wb"));
    EXPECT_EQ(-2, writeTo(file.get()));
    const std::string bytes = bytesOfFile("/tmp/small/overlay");
    EXPECT_EQ(4096U, bytes.size());
    FaultyFile whole;
    EXPECT_EQ(0, writeTo(whole.open().get()));
    const auto first = static_cast<size_t>(GetParam().firstSeek);
    EXPECT_EQ(std::string(first, '\0') + whole.bytes.substr(first, 4096 - first), bytes);
}

TEST_P(OverlayFaultsTest, TheFileStaysOpenForItsOwner) {
    const OverlayFile file;
    EXPECT_EQ(0, writeTo(file));
    EXPECT_EQ(0, writeTo(file));
    EXPECT_EQ(0, std::fseek(file, 0, SEEK_END));
    EXPECT_NE(EOF, std::fputs("more", file));
    EXPECT_EQ(0, std::fflush(file));
    EXPECT_TRUE(file.bytes().ends_with("more"));
}

TEST_F(SmallDiskOverlayTest, AnEndWordThatDoesNotFitEndsSaveRleBeforeTheHeader) {
    EXPECT_EQ(-2, noise(1021)->SaveRLE(file.get(), 1, false));  // 12 + 4 · 1021 = 4096
    EXPECT_EQ(4096U, bytes().size());
    EXPECT_EQ(kNoHeader, bytes().substr(0, 12));
}

TEST_F(SmallDiskOverlayTest, PaddingThatDoesNotFitEndsSaveRleBeforeTheHeader) {
    EXPECT_EQ(-2, noise(1020)->SaveRLE(file.get(), 1, false));
    EXPECT_EQ(kNoHeader, bytes().substr(0, 12));
}

TEST_F(SmallDiskOverlayTest, WhatJustFitsIsWhole) {
    const auto bitmap = noise(991);  // 12 + 31 · 128 = 3980
    EXPECT_EQ(0, bitmap->SaveRLE(file.get(), 1, false));
    EXPECT_EQ(PlainOverlay(*bitmap).runLengths(1, false), bytes());
}

TEST_F(SmallDiskOverlayTest, WhatWasWrittenBeforeIsNotLostSilently) {
    std::fputs(std::string(6000, 'x').c_str(), file.get());
    EXPECT_EQ(-2, noise(1)->SaveRLE(file.get(), 1, false));
}
