// Frames on the screen of HaldenOledPanel.
#include <sys/resource.h>

#include <csignal>
#include <string>

#include "Tests/HAL/Panel/ScreenCalls.h"
#include "Tests/HAL/Panel/ScreenWorld.h"

namespace {

using testing::ElementsAre;

class HaldenOledPanelFrameTest : public ScreenWorld {};

TEST_F(HaldenOledPanelFrameTest, AFrameIsOneSeekAndOneWrite) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    ScreenCalls screen;
    EXPECT_TRUE(panel.updateScreen(&frame));
    EXPECT_THAT(screen.calls, ElementsAre("lseek 0", "write 15360"));
    EXPECT_EQ(frameBytes(), world.read(kScreen));
}

TEST_F(HaldenOledPanelFrameTest, EveryFrameStartsAtTheBeginning) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    panel.updateScreen(&frame);
    frame.fill(0x80000000);
    panel.updateScreen(&frame);
    EXPECT_EQ(frameBytes(), world.read(kScreen));
}

TEST_F(HaldenOledPanelFrameTest, ShortWritesGoOnWhereTheyStopped) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    ScreenCalls screen;
    screen.writeLimit = 6000;
    EXPECT_TRUE(panel.updateScreen(&frame));
    EXPECT_THAT(screen.calls, ElementsAre("lseek 0", "write 15360", "write 9360", "write 3360"));
    EXPECT_EQ(frameBytes(), world.read(kScreen));
}

TEST_F(HaldenOledPanelFrameTest, AFrameStopsAtTheFirstFailedWriteAndStillReportsSuccess) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit small{1000, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    ScreenCalls screen;
    const bool result = panel.updateScreen(&frame);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, previous);
    EXPECT_TRUE(result);
    EXPECT_THAT(screen.calls, ElementsAre("lseek 0", "write 15360", "write 14360"));
    EXPECT_EQ(frameBytes().substr(0, 1000), world.read(kScreen));
}

TEST_F(HaldenOledPanelFrameTest, AFrameStopsAtAWriteOfNothing) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    ScreenCalls screen;
    screen.writeAnswer = 0;
    EXPECT_TRUE(panel.updateScreen(&frame));
    EXPECT_THAT(screen.calls, ElementsAre("lseek 0", "write 15360"));
}

TEST_F(HaldenOledPanelFrameTest, AnInterruptedWriteIsNotRepeated) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    ScreenCalls screen;
    screen.writeAnswer = -1;
    EXPECT_TRUE(panel.updateScreen(&frame));
    EXPECT_THAT(screen.calls, ElementsAre("lseek 0", "write 15360"));
}

TEST_F(HaldenOledPanelFrameTest, AFrameToNoScreenOrAFullOneReportsSuccess) {
    EXPECT_TRUE(panel.updateScreen(&frame));
    screenIs("/dev/full");
    ASSERT_TRUE(panel.open("oled_spi", 0));
    EXPECT_TRUE(panel.updateScreen(&frame));
}

}  // namespace
