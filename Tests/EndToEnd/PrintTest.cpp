#include <gmock/gmock.h>

#include "Tests/EndToEnd/Panelprobe.h"
#include "Tests/Support/PanelPicture.h"

namespace {

using e2e::onBoard;
using support::asOperatorSees;
using support::board;
using support::BoardRun;
using support::expectLooksLike;
using testing::HasSubstr;

TEST(PrintEndToEnd, ShowsTwoLinesCentred) {
    const BoardRun run = onBoard({"--print", "Hello,", "panel"});
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("", run.out);
    EXPECT_EQ("", run.err);
    expectLooksLike(e2e::golden("hello-panel"), asOperatorSees(run.frame));
}

TEST(PrintEndToEnd, ShowsOneLineOverAnEmptySecond) {
    const BoardRun run = onBoard({"--print", "one"});
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(onBoard({"--print", "one", ""}).frame, run.frame);
    expectLooksLike(e2e::golden("one-line"), asOperatorSees(run.frame));
}

TEST(PrintEndToEnd, IgnoresAThirdLine) {
    const BoardRun run = onBoard({"--print", "one", "two", "three"});
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(onBoard({"--print", "one", "two"}).frame, run.frame);
}

TEST(PrintEndToEnd, WithoutALinePrintsTheUsage) {
    const BoardRun run = onBoard({"--print"});
    EXPECT_EQ(255, run.status);
    EXPECT_EQ(e2e::kUsage, run.out);
    EXPECT_EQ("", run.frame);
}

TEST(PrintEndToEnd, OptionsAreComparedExactly) {
    for (const char* option : {"--Print", "--print ", "-print", "print", ""}) {
        const BoardRun run = onBoard({option, "one"});
        EXPECT_EQ(255, run.status) << option;
        EXPECT_EQ(e2e::kUsage, run.out) << option;
    }
}

TEST(PrintEndToEnd, WithoutAnArgumentStillOpensPanelAndFontBeforeTheUsage) {
    const BoardRun run = onBoard({}, board().traced());
    EXPECT_EQ(255, run.status);
    EXPECT_EQ(e2e::kUsage, run.out);
    EXPECT_THAT(run.trace, testing::Contains(HasSubstr("fpga write 0x1000")))
        << "the LED is switched off at init";

    const BoardRun noFont = onBoard({}, board().option("--no-font"));
    EXPECT_EQ(255, noFont.status);
    EXPECT_EQ("Cannot find Font.ttf\ninit failed for path: /opt/pattern/oled/\n", noFont.out);
}

TEST(PrintEndToEnd, AFrameIsOneSeekAndOneWriteAndTheStateFollows) {
    const BoardRun run = onBoard({"--print", "Hello,", "panel"}, board().traced());
    std::vector<std::string> screen;
    for (const std::string& line : run.trace) {
        if (const auto at = line.find("screen"); at != std::string::npos) {
            screen.push_back(line.substr(at));
        }
    }
    EXPECT_THAT(screen, testing::ElementsAre("screen seek 0", "screen frame 15360 bytes at 0",
                                             "screen seek 0", "screen state 0x31 0x0a at 0"));
}

TEST(PrintEndToEnd, TheLogOpensBeforeTheScreenAndClosesAtTheEnd) {
    const BoardRun run = onBoard({"--print", "Hello,", "panel"});
    EXPECT_THAT(run.log,
                testing::ElementsAre("local1.info panelprobe: Logging: ******* Logging started *******",
                                     "local1.info panelprobe: Logging: ******* Logging shutdown ******"));
}

TEST(PrintEndToEnd, LongLinesAndHighBytesDrawWhatFits) {
    std::string highBytes;
    for (int byte = 128; byte <= 255; ++byte) {
        highBytes.push_back(static_cast<char>(byte));
    }
    const BoardRun wide = onBoard({"--print", std::string(10000, 'W'), std::string(10000, 'W')});
    EXPECT_EQ(0, wide.status);
    EXPECT_EQ(onBoard({"--print", std::string(400, 'W'), std::string(400, 'W')}).frame, wide.frame)
        << "only the middle is seen, and it is the same";

    const BoardRun breaks = onBoard({"--print", std::string(10000, '\n'), std::string(10000, '\n')});
    EXPECT_EQ(0, breaks.status);
    EXPECT_EQ(std::string(15360, '\0'), breaks.frame);

    const BoardRun high = onBoard({"--print", highBytes, ""});
    EXPECT_EQ(0, high.status);
    EXPECT_NE(std::string(15360, '\0'), high.frame);
}

}  // namespace
