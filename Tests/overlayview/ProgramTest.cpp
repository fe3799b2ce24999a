// The real program on real files.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/overlayview/OverlayBytes.h"
#include "Tests/overlayview/PngPixels.h"
#include "Tests/overlayview/Program.h"
#include "Tools/overlayview/Files.h"

namespace {

using overlays::File;
using overlays::pixelsOf;
using overlays::ProgramRun;
using overlays::run;
using overlays::whiteHundred;
using overlays::words;
using overlayview::readFile;
using overlayview::writeFile;
using testing::HasSubstr;
using testing::IsEmpty;

class OverlayProgramTest : public testing::Test {
protected:
    /// Runs the program on a file of these bytes.
    ProgramRun runOn(const File& file, std::vector<std::string> options = {}) {
        writeFile(path, file);
        options.push_back(path);
        return overlays::runOverlayview(directory.file("."), options);
    }
    bool hasPicture() const { return std::filesystem::exists(picture); }

    support::TemporaryDirectory directory;
    std::string path = directory.file("overlay");
    std::string picture = directory.file("picture.png");
};

TEST_F(OverlayProgramTest, TellsWhatAFileIs) {
    const ProgramRun run = runOn(whiteHundred());
    EXPECT_EQ(0, run.status);
    EXPECT_THAT(run.out, HasSubstr("identifier      7\n"));
    EXPECT_THAT(run.out, HasSubstr("kind            rle\n"));
    EXPECT_EQ("", run.err);
}

TEST_F(OverlayProgramTest, TellsItAsJson) {
    const ProgramRun run = runOn(whiteHundred(), {"--json", "--width", "10"});
    EXPECT_EQ(0, run.status);
    const nlohmann::json json = nlohmann::json::parse(run.out);
    EXPECT_EQ(100, json["pixels"]);
    EXPECT_EQ(10, json["height"]);
}

TEST_F(OverlayProgramTest, DrawsAPicture) {
    EXPECT_EQ(0, runOn(whiteHundred(), {"--width", "20", "-o", picture}).status);
    const overlayview::Picture drawn = pixelsOf(readFile(picture));
    EXPECT_EQ((overlayview::Size{20, 5}), drawn.size);
    EXPECT_THAT(drawn.pixels, testing::Each(overlayview::Rgba{255, 255, 255, 255}));
}

TEST_F(OverlayProgramTest, APictureOnStandardOutputSendsTheDescriptionToStandardError) {
    const ProgramRun run = runOn(whiteHundred(), {"--width", "20", "-o", "-"});
    EXPECT_EQ(0, run.status);
    EXPECT_EQ((overlayview::Size{20, 5}), pixelsOf(std::as_bytes(std::span(run.out))).size);
    EXPECT_THAT(run.err, HasSubstr("kind            rle\n"));
}

TEST_F(OverlayProgramTest, AnUnknownSizeAsksForAWidth) {
    const ProgramRun run = runOn(whiteHundred(), {"-o", picture});
    EXPECT_EQ(2, run.status);
    EXPECT_THAT(run.err, HasSubstr("say --width N"));
    EXPECT_THAT(run.out, HasSubstr("pixels          100\n")) << "still told";
    EXPECT_FALSE(hasPicture());
}

TEST_F(OverlayProgramTest, WrongUsageIsStatusTwo) {
    const ProgramRun run = runOn(whiteHundred(), {"--as", "jpeg"});
    EXPECT_EQ(2, run.status);
    EXPECT_THAT(run.err, HasSubstr("overlayview --help"));
    EXPECT_EQ("", run.out);
}

TEST_F(OverlayProgramTest, FilesThatCannotBeReadOrWrittenAreStatusThree) {
    const ProgramRun missing = overlays::runOverlayview(directory.file("."), {"/no/such/file"});
    EXPECT_EQ(3, missing.status);
    EXPECT_EQ("overlayview: /no/such/file: No such file or directory\n", missing.err);
    EXPECT_EQ(3, overlays::runOverlayview(directory.file("."), {"/"}).status);
    EXPECT_EQ(3, runOn(whiteHundred(), {"--width", "10", "-o", "/no/such/file"}).status);
    const ProgramRun full = runOn(whiteHundred(), {"--width", "10", "-o", "/dev/full"});
    EXPECT_EQ(3, full.status);
    EXPECT_EQ("overlayview: /dev/full: No space left on device\n", full.err);
}

TEST_F(OverlayProgramTest, AStandardOutputThatTakesNothingIsStatusThree) {
    writeFile(path, whiteHundred());
    const std::string command = OVERLAYVIEW " --width 10 " + path;
    const auto statusOf = [](const std::string& line) { return WEXITSTATUS(std::system(line.c_str())); };
    EXPECT_EQ(3, statusOf(command + " >/dev/full 2>/dev/null"));
    EXPECT_EQ(3, statusOf(command + " -o - >/dev/full 2>/dev/null"));
}

/// A damaged file, and what is said of it.
struct Damage {
    const char* name;
    File file;
    const char* said;
};

File without(File file, std::size_t bytes) {
    file.resize(file.size() - bytes);
    return file;
}

File changed(std::size_t at, unsigned value) {
    File file = whiteHundred();
    file[at] = static_cast<std::byte>(value);
    return file;
}

/// 100 pixels in runs that leave no room for an end word.
File thirtyTwoRuns() {
    File body;
    for (std::uint32_t i = 0; i < 32; ++i) {
        overlays::append(body, run(i == 31 ? 7 : 3, 29 - i % 2, 16, 16, 4));
    }
    return body;
}

TEST_F(OverlayProgramTest, DamageIsToldAndWhatIsLeftIsDrawn) {
    const std::uint32_t white = run(100, 29, 16, 16, 4);
    const Damage damages[] = {
        {"cut in the padding", without(whiteHundred(), 1), "1 bytes of the body are missing"},
        {"cut behind the run", without(whiteHundred(), 124), "no end word"},
        {"another marker", changed(0, 0), "marker is not ffffffff"},
        {"a length that is too small", changed(11, 0), "goes on for 128 bytes"},
        {"a length that is odd", changed(11, 31), "no multiple of 32"},
        {"a length larger than the file", changed(8, 0x80), "missing"},
        {"no end word", overlays::container(0, thirtyTwoRuns()), "no end word"},
        {"an empty run", overlays::container(0, words({white, 0x3FFFF & white, 0})), "length of 0"},
        {"words behind the end", overlays::container(0, words({white, 0, white})), "behind the end word"},
    };
    for (const Damage& damage : damages) {
        SCOPED_TRACE(damage.name);
        std::filesystem::remove(picture);
        const ProgramRun run = runOn(damage.file, {"--as", "rle", "--width", "10", "-o", picture});
        EXPECT_EQ(1, run.status);
        EXPECT_THAT(run.out, HasSubstr(damage.said));
        EXPECT_THAT(run.err, IsEmpty());
        ASSERT_TRUE(hasPicture());
        EXPECT_EQ((overlayview::Size{10, 10}), pixelsOf(readFile(picture)).size);
    }
}

TEST_F(OverlayProgramTest, AFileCutAtAnyByteIsDamaged) {
    const File whole = whiteHundred();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(1, runOn(without(whole, whole.size() - size)).status) << size;
    }
}

}  // namespace
