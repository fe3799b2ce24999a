#include "Tools/panelprobe/WaitButton.h"

#include <string>

#include "Tests/panelprobe/Screen.h"

namespace {

using testing::_;
using testing::InSequence;
using testing::Return;

struct Answer {
    std::uint32_t word;
    std::string text;
};

class WaitButtonTest : public ScreenTest, public testing::WithParamInterface<Answer> {
protected:
    std::string answerTo(std::uint32_t word) {
        InSequence inThisOrder;
        EXPECT_CALL(*panel, updateScreen(ui().oled.get())).WillOnce([](VLGraphics::OLED* frame) {
            EXPECT_EQ(twoLines("Press any", "button", 0x80000000), pixelsOf(*frame));
            return true;
        });
        EXPECT_CALL(*panel, setState(kStateOne)).WillOnce(Return(true));
        EXPECT_CALL(*panel, getButtons(_)).Times(3).WillRepeatedly(Reads(kNothing));
        EXPECT_CALL(*panel, getButtons(_)).WillOnce(Reads(word));
        testing::internal::CaptureStdout();
        waitForAnyKey(ui());
        return testing::internal::GetCapturedStdout();
    }
};

TEST_P(WaitButtonTest, PrintsTheFirstOperatedControlInTheOrderOfTheTests) {
    EXPECT_EQ(GetParam().text, answerTo(GetParam().word));
}

INSTANTIATE_TEST_SUITE_P(
    Readings, WaitButtonTest,
    testing::Values(Answer{kLeft, "OLED left button\n"}, Answer{7U << 16, "OLED left button\n"},
                    Answer{kRight, "OLED right button\n"}, Answer{kRed, "Red push button\n"},
                    Answer{kCounterClockwise, "Red button turned left (counterclockwise)\n"},
                    Answer{0x10U << 27, "Red button turned left (counterclockwise)\n"},
                    Answer{kClockwise, "Red button turned right (clockwise)\n"},
                    Answer{0x0FU << 27, "Red button turned right (clockwise)\n"},
                    Answer{kLeft | kCounterClockwise, "OLED left button\n"},
                    Answer{kRight | kRed | kClockwise, "OLED right button\n"},
                    Answer{kRed | kCounterClockwise, "Red push button\n"}));

}  // namespace
