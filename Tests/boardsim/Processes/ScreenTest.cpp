// The screen file as programs see it, and the pictures that come out.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "Tests/Support/PanelPicture.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::HasSubstr;

const std::string kClient = CLIENT;
const std::string kScreen = "/sys/bus/avalon/devices/subsys_hps_oled_spi/spi_master/spi1/spi1.0/screen";

BoardRun shell(const std::string& script, const support::VirtualBoard& on = board()) {
    return on.run({"/bin/sh", "-c", script});
}

TEST(ScreenFileTest, TheLastFrameIsKeptByteForByte) {
    EXPECT_EQ(std::string(15360, '\x5A'), board().run({kClient, "draw:1", "state:1", "draw:0x5A"}).frame);
}

TEST(ScreenFileTest, IsDarkUntilItIsSwitchedOn) {
    EXPECT_EQ("read 1, 0\nread 1, 1\nread 1, 0\n",
              board().run({kClient, "lit", "draw:1", "state:1", "lit", "state:0", "lit"}).out);
}

TEST(ScreenFileTest, ShellsMayTruncateAppendAndStat) {
    const BoardRun run = shell("echo 1 > " + kScreen + " && echo 1 >> " + kScreen + " && stat -c %F " +
                               kScreen + " && wc -c < " + kScreen);
    EXPECT_EQ("regular empty file\n1\n", run.out) << run.err;
    EXPECT_EQ(0, run.status);
}

TEST(ScreenFileTest, DdMayWriteAFrameInPieces) {
    const BoardRun run =
        shell("head -c 15360 /dev/zero | tr '\\000' A | dd bs=512 of=" + kScreen + " 2>/dev/null");
    EXPECT_EQ(std::string(15360, 'A'), run.frame);
}

TEST(ScreenFileTest, WrongSizesAreRefused) {
    EXPECT_NE(0, shell("printf x > " + kScreen + " 2>/dev/null").status);
    EXPECT_NE(0, shell("head -c 15361 /dev/zero | dd bs=15361 of=" + kScreen + " 2>/dev/null").status);
}

TEST(ScreenFileTest, CannotBeRemoved) {
    EXPECT_NE(0, shell("rm -f " + kScreen + " 2>/dev/null").status);
}

TEST(ScreenFileTest, MisbehavesOnDemand) {
    EXPECT_EQ("written 1\n", board().screen("one-byte").run({kClient, "draw:1"}).out);
    EXPECT_EQ("written -1\nwritten -1\nread -1, 2\n",
              board().screen("failing").run({kClient, "draw:1", "state:1", "lit"}).out);
    EXPECT_EQ("written -1\nread 1, 0\n", board().screen("full").run({kClient, "draw:1", "lit"}).out);
    EXPECT_EQ("written 2\nwritten -1\n",
              board().screen("full:15362").run({kClient, "draw:1", "draw:2", "state:1"}).out);
}

TEST(ScreenFileTest, SeveralProgramsMayWriteAtOnce) {
    const BoardRun run =
        shell("for i in 1 2 3 4; do " + kClient + " draw:$i draw:$i draw:$i state:1 & done; wait; exec " +
              kClient + " draw:9 state:1");
    EXPECT_EQ(std::string(15360, '\x09'), run.frame);
    EXPECT_EQ("", run.out);
}

TEST(ScreenFileTest, WhoStillWritesWhenTheProgramEndsHoldsNothingUp) {
    EXPECT_EQ(7, shell("(while :; do " + kClient + " draw:1; done) & (while :; do " + kClient +
                       " draw:2; done) & " + kClient + " draw:3; exit 7")
                     .status);
}

class PictureOutput : public testing::Test {
protected:
    support::TemporaryDirectory files;
    std::string png = files.file("panel.png");
};

TEST_F(PictureOutput, TheScreenshotShowsWhatAnOperatorSees) {
    // The first pixel written is red, the rest black: an operator sees red in the lower right corner.
    const BoardRun run = shell(
        "{ printf '\\370\\000'; head -c 15358 /dev/zero; } | dd bs=15360 iflag=fullblock of=" + kScreen +
            " 2>/dev/null",
        board().option("--screenshot", png));
    const support::Picture picture = support::readPng(png);
    ASSERT_EQ(160, picture.width);
    ASSERT_EQ(48, picture.height);
    std::vector<std::uint8_t> expected(3 * 160 * 48);
    expected[expected.size() - 3] = 255;
    EXPECT_EQ(expected, picture.rgb);
    EXPECT_EQ(picture.rgb, support::asOperatorSees(run.frame).rgb);
}

TEST_F(PictureOutput, TheScreenshotIsScaled) {
    board().option("--screenshot", png).option("--scale", "3").run({kClient, "draw:0xFF"});
    const support::Picture picture = support::readPng(png);
    EXPECT_EQ(480, picture.width);
    EXPECT_EQ(144, picture.height);
    EXPECT_EQ(std::vector<std::uint8_t>(3 * 480 * 144, 255), picture.rgb);
}

TEST_F(PictureOutput, WithoutAFrameNothingIsWrittenAndThatIsSaid) {
    std::ofstream(png) << "from before";
    const BoardRun run =
        board().option("--screenshot", png).option("--show").run({kClient, "state:1", "exit:4"});
    EXPECT_EQ(4, run.status);
    EXPECT_EQ("", run.out);
    EXPECT_THAT(run.err, HasSubstr("no whole frame: " + png + " is not written"));
    EXPECT_THAT(run.err, HasSubstr("nothing to show"));
    std::string kept;
    std::ifstream(png) >> kept;
    EXPECT_EQ("from", kept);
}

TEST_F(PictureOutput, ShownWithoutATerminalItIsPlainBlocks) {
    const BoardRun run = board().option("--show").run({kClient, "draw:0xFF"});
    std::string row;
    for (int i = 0; i < 160; ++i) {
        row += "█";
    }
    std::string expected;
    for (int i = 0; i < 24; ++i) {
        expected += row + "\n";
    }
    EXPECT_EQ(expected, run.out);
}

/// Runs on a pseudo terminal, as script(1) makes one.
std::string onTerminal(const std::string& environment, int columns = 80) {
    std::string text;
    const std::string command = environment + " script -qec 'stty cols " + std::to_string(columns) +
                                "; exec " BOARDSIM " run --show -- " + kClient +
                                " draw:0xFF' /dev/null < /dev/null";
    FILE* output = popen(command.c_str(), "r");
    for (int c = fgetc(output); c != EOF; c = fgetc(output)) {
        text += static_cast<char>(c);
    }
    pclose(output);
    return text;
}

TEST_F(PictureOutput, OnATerminalItIsColoured) {
    EXPECT_THAT(onTerminal("env -u NO_COLOR TERM=xterm-256color"), HasSubstr("\x1b["));
}

TEST_F(PictureOutput, ATerminalThatWantsNoColourGetsPlainBlocks) {
    for (const char* environment :
         {"NO_COLOR=1 TERM=xterm-256color", "env -u NO_COLOR TERM=dumb", "env -u NO_COLOR -u TERM"}) {
        const std::string text = onTerminal(environment);
        EXPECT_THAT(text, HasSubstr("█")) << environment;
        EXPECT_EQ(std::string::npos, text.find('\x1b')) << environment;
    }
}

TEST_F(PictureOutput, PlainBlocksFitTheTerminal) {
    struct Fit {
        int columns;
        std::size_t width;
        std::ptrdiff_t height;
    };
    // Full size, two pixels a column, and a third of that.
    for (const Fit& fit :
         {Fit{200, 160, 24}, Fit{160, 160, 24}, Fit{159, 80, 24}, Fit{80, 80, 24}, Fit{30, 27, 8}}) {
        const std::string text = onTerminal("NO_COLOR=1 TERM=xterm-256color", fit.columns);
        std::string row;
        for (std::size_t i = 0; i < fit.width; ++i) {
            row += "█";
        }
        EXPECT_THAT(text, testing::StartsWith(row + "\r\n")) << fit.columns;
        EXPECT_EQ(fit.height, std::count(text.begin(), text.end(), '\n')) << fit.columns;
    }
}

}  // namespace
