#include "Vl/HAL/Panel/HaldenOledPanel.h"

#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "Tests/HAL/Panel/ScreenCalls.h"
#include "Tests/HAL/Panel/ScreenWorld.h"

namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::OledPanelInterface;

class HaldenOledPanelTest : public ScreenWorld {};

TEST_F(HaldenOledPanelTest, IsNoPanelByItselfForItHasNoControls) {
    EXPECT_TRUE(std::is_abstract_v<Valen::HaldenOledPanel>);
    EXPECT_FALSE(std::is_abstract_v<ScreenOnly>);
}

TEST_F(HaldenOledPanelTest, Has160By48Pixels) {
    EXPECT_EQ(160, panel.getXres());
    EXPECT_EQ(48, panel.getYres());
}

TEST_F(HaldenOledPanelTest, OpensTheScreenForReadingAndWritingAndClosesItOnExec) {
    const int next = dup(0);
    close(next);
    EXPECT_TRUE(panel.open("oled_spi", 0));
    EXPECT_EQ(1, descriptorsOn(kScreen));
    EXPECT_EQ(FD_CLOEXEC, fcntl(next, F_GETFD));
    EXPECT_EQ(O_RDWR, fcntl(next, F_GETFL) & O_ACCMODE);
}

TEST_F(HaldenOledPanelTest, OpeningIsLoggedForTheConsoleWithALineFeedOfItsOwn) {
    EXPECT_TRUE(panel.open("oled_spi", 0));
    EXPECT_THAT(syslog.lines(), IsEmpty());
    logUpTo(Valen::Log::SeverityLevel::CONSOLEMIN);
    EXPECT_TRUE(panel.open("oled_spi", 0));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("OLED: open oled device file: " + kScreen + "\n")));
}

TEST_F(HaldenOledPanelTest, ADeviceThatIsNotFoundLeavesEverythingAsItWas) {
    logEverything();
    EXPECT_FALSE(panel.open("oled_spi", 1));
    EXPECT_FALSE(panel.open("no_such_core", 0));
    EXPECT_THAT(syslog.lines(), IsEmpty());
    ASSERT_TRUE(panel.open("oled_spi", 0));
    EXPECT_FALSE(panel.open("no_such_core", 0));
    EXPECT_EQ(1, descriptorsOn(kScreen));
}

TEST_F(HaldenOledPanelTest, OpeningAgainClosesTheEarlierScreen) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    ASSERT_TRUE(panel.open("oled_spi", -1));
    EXPECT_EQ(1, descriptorsOn(kScreen));
}

TEST_F(HaldenOledPanelTest, AScreenThatCannotBeOpenedClosesTheEarlierOneToo) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    fs::rename(kScreen, kScreen + "2");
    EXPECT_FALSE(panel.open("oled_spi", 0));
    EXPECT_EQ(0, descriptorsOn(kScreen + "2"));
}

TEST_F(HaldenOledPanelTest, DestructionThroughTheInterfaceClosesTheScreen) {
    auto owned = std::make_unique<ScreenOnly>();
    ASSERT_TRUE(owned->open("oled_spi", 0));
    std::unique_ptr<OledPanelInterface> handedOut = std::move(owned);
    handedOut.reset();
    EXPECT_EQ(0, descriptorsOn(kScreen));
}

TEST_F(HaldenOledPanelTest, AStateIsItsCharacterAndALineFeedAtTheBeginning) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    panel.updateScreen(&frame);
    ScreenCalls screen;
    EXPECT_TRUE(panel.setState(static_cast<OledPanelInterface::OledState>(49)));
    EXPECT_THAT(screen.calls, ElementsAre("lseek 0", "write 2"));
    EXPECT_EQ("\x31\x0A", world.read(kScreen).substr(0, 2));
    EXPECT_EQ(kFrameSize, world.read(kScreen).size());
}

TEST_F(HaldenOledPanelTest, EveryByteIsAState) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    for (int state = 0; state <= 255; ++state) {
        EXPECT_TRUE(panel.setState(static_cast<OledPanelInterface::OledState>(state)));
        EXPECT_EQ(std::string{static_cast<char>(state)} + '\n', world.read(kScreen));
    }
}

TEST_F(HaldenOledPanelTest, TheStateAfterAFrameIsTheCharacterOne) {
    EXPECT_EQ(49, static_cast<int>(OledPanelInterface::kFrameShown));
}

TEST_F(HaldenOledPanelTest, AStateThatIsNotWhollyWrittenFails) {
    EXPECT_FALSE(panel.setState(OledPanelInterface::kFrameShown));
    ASSERT_TRUE(panel.open("oled_spi", 0));
    {
        ScreenCalls screen;
        screen.writeLimit = 1;
        EXPECT_FALSE(panel.setState(OledPanelInterface::kFrameShown));
        EXPECT_THAT(screen.calls, ElementsAre("lseek 0", "write 2"));
    }
    screenIs("/dev/full");
    ASSERT_TRUE(panel.open("oled_spi", 0));
    EXPECT_FALSE(panel.setState(OledPanelInterface::kFrameShown));
}

TEST_F(HaldenOledPanelTest, IsLitUnlessTheFirstByteIsZero) {
    ASSERT_TRUE(panel.open("oled_spi", 0));
    const struct {
        std::string content;
        bool lit;
    } rows[] = {{std::string(1, '\0'), false}, {"1", true}, {"0", true}, {std::string("\0\1", 2), false}};
    for (const auto& row : rows) {
        support::PrivateWorld::write(kScreen, row.content);
        EXPECT_EQ(row.lit, panel.isIlluminated());
        EXPECT_EQ(row.lit, panel.isIlluminated());
    }
}

TEST_F(HaldenOledPanelTest, IsTakenToBeLitWhenItCannotBeReadOnPurpose) {
    EXPECT_TRUE(panel.isIlluminated()) << "not open";
    ASSERT_TRUE(panel.open("oled_spi", 0));
    EXPECT_TRUE(panel.isIlluminated()) << "nothing to read";
    screenIs("/proc/self/mem");  // where there is nothing at offset 0
    ASSERT_TRUE(panel.open("oled_spi", 0));
    EXPECT_TRUE(panel.isIlluminated()) << "an error";
}

}  // namespace
