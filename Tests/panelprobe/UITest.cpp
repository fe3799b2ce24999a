#include "Tools/panelprobe/UI.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "Tests/panelprobe/Screen.h"

namespace {

using testing::ExitedWithCode;
using testing::InSequence;
using testing::Return;

constexpr const char* kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/// Death tests see standard error only.
void standardOutputIsError() {
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

void build() {
    standardOutputIsError();
    const UI ui;
    std::_Exit(7);  // only a UI that was built gets here
}

class UIConstruction : public testing::Test {
protected:
    support::PrivateWorld world;
};

TEST_F(UIConstruction, TakesTheInstalledFont) {
    world.write("/opt/pattern/oled/Font.ttf", world.read(kFont));
    const UI ui;
    EXPECT_TRUE(ui.panel);
    EXPECT_EQ(160, ui.oled->getBmp().getWidth());
    EXPECT_EQ(48, ui.oled->getBmp().getHeight());
}

TEST_F(UIConstruction, WithoutTheDirectoryTakesTheWorkingDirectorysFontAndPrintsNothing) {
    world.write("/tmp/here/Font.ttf", world.read(kFont));
    EXPECT_EXIT(
        {
            std::filesystem::current_path("/tmp/here");
            build();
        },
        ExitedWithCode(7), "^$");
}

TEST_F(UIConstruction, WithTheDirectoryButNoFontPrintsBothMessagesInOrderAndEndsWith255) {
    world.makeDirectory("/opt/pattern/oled");
    EXPECT_EXIT(build(), ExitedWithCode(255),
                "^Cannot find Font.ttf\ninit failed for path: /opt/pattern/oled/\n$");
}

TEST_F(UIConstruction, NeverLooksInTheWorkingDirectoryWhenTheInstalledOneExists) {
    world.makeDirectory("/opt/pattern/oled");
    world.write("/tmp/here/Font.ttf", world.read(kFont));
    EXPECT_EXIT(
        {
            std::filesystem::current_path("/tmp/here");
            build();
        },
        ExitedWithCode(255), "^Cannot find Font.ttf\n");
}

class UIPrintTest : public ScreenTest {};

TEST_F(UIPrintTest, ShowsTheFrameAndThenSendsTheState) {
    InSequence inThisOrder;
    EXPECT_CALL(*panel, updateScreen(ui().oled.get())).WillOnce([](VLGraphics::OLED* frame) {
        EXPECT_EQ(twoLines("upper", "lower", 0x80009600), pixelsOf(*frame));
        return true;
    });
    EXPECT_CALL(*panel, setState(kStateOne)).WillOnce(Return(true));
    ui().print("upper", "lower", 0x80009600);
}

TEST_F(UIPrintTest, SendsTheStateAlsoWhenTheFrameCouldNotBeShown) {
    InSequence inThisOrder;
    EXPECT_CALL(*panel, updateScreen(ui().oled.get())).WillOnce(Return(false));
    EXPECT_CALL(*panel, setState(kStateOne)).WillOnce(Return(false));
    ui().print("upper", "lower", 0x80000000);
}

TEST_F(UIPrintTest, ANewPrintLeavesNothingOfTheOldOne) {
    EXPECT_CALL(*panel, updateScreen).Times(2).WillRepeatedly(Return(true));
    EXPECT_CALL(*panel, setState).Times(2).WillRepeatedly(Return(true));
    ui().print("something long", "and more of it", 0x80009600);
    ui().print("", "", 0x80000000);
    EXPECT_EQ(std::vector<std::uint16_t>(160 * 48, 0), pixels());
}

TEST_F(UIPrintTest, WithoutAPanelDrawsNothing) {
    const auto before = pixels();
    ui().panel.reset();
    ui().print("upper", "lower", 0x80009600);
    EXPECT_EQ(before, pixels());
}

}  // namespace
