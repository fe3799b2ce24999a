#include "Tools/panelprobe/Check.h"

#include <functional>

#include "Tests/panelprobe/Screen.h"

namespace {

using testing::_;
using testing::InSequence;
using testing::Return;

constexpr std::uint32_t kBlack = 0x80000000;
constexpr std::uint32_t kGreen = 0x80009600;

int leftPressed(Valen::OledPanelButtons& reading) {
    return (reading.word & 0x00070000) != 0 ? 1 : 0;
}
int clockwise(Valen::OledPanelButtons& reading) {
    return static_cast<std::int32_t>(reading.word) >> 27 > 0;
}
int counterClockwise(Valen::OledPanelButtons& reading) {
    return reading.word >> 31 != 0;
}

class CheckTest : public ScreenTest {
protected:
    void expectFrame(const char* line1, const char* line2, std::uint32_t background) {
        EXPECT_CALL(*panel, updateScreen(ui().oled.get())).WillOnce([=](VLGraphics::OLED* frame) {
            EXPECT_EQ(twoLines(line1, line2, background), pixelsOf(*frame)) << line1 << " / " << line2;
            return true;
        });
        EXPECT_CALL(*panel, setState(kStateOne)).WillOnce(Return(true));
    }
    void expectPoll(std::uint32_t word) { EXPECT_CALL(*panel, getButtons(_)).WillOnce(Reads(word)); }
    void expectReminder() { EXPECT_CALL(*panel, setState(kStateOne)).WillOnce(Return(true)); }

    /// What `run` prints on standard output.
    static std::string printed(const std::function<void()>& run) {
        testing::internal::CaptureStdout();
        run();
        return testing::internal::GetCapturedStdout();
    }

    InSequence inThisOrder;
};

TEST_F(CheckTest, ShowsThePromptOnceAndEndsWithOneWhenTheControlIsOperated) {
    expectFrame("line one", "line two", kBlack);
    expectPoll(kNothing);
    expectPoll(kNothing);
    expectPoll(kLeft);
    EXPECT_EQ("", printed([this] { EXPECT_EQ(1, check(ui(), "line one", "line two", leftPressed)); }));
}

TEST_F(CheckTest, AnotherControlIsAnsweredWithTheIndentedPromptAndTheStateAgain) {
    expectFrame("< Press ", "< Button", kBlack);
    expectPoll(kClockwise);
    expectReminder();
    expectPoll(kLeft);
    EXPECT_EQ("Waiting for:\n\t< Press \n\t< Button\n",
              printed([this] { check(ui(), "< Press ", "< Button", leftPressed); }));
}

TEST_F(CheckTest, TheAwaitedControlTogetherWithAnotherEndsTheStepWithoutAReminder) {
    expectFrame("a", "b", kBlack);
    expectPoll(kLeft | kRed | kClockwise);
    EXPECT_EQ("", printed([this] { check(ui(), "a", "b", leftPressed); }));
}

TEST_F(CheckTest, AnEncoderCountOfZeroRemindsOnlyWhenAControlBitIsSet) {
    expectFrame("< Turn rotary", "< left (ccw)", kBlack);
    expectPoll(0x00000200);  // none of the controls' bits
    expectPoll(0x0600FFFF);
    expectPoll(kRed);
    expectReminder();
    expectPoll(kCounterClockwise);
    EXPECT_EQ("Waiting for:\n\t< Turn rotary\n\t< left (ccw)\n",
              printed([this] { check(ui(), "< Turn rotary", "< left (ccw)", counterClockwise); }));
}

TEST_F(CheckTest, EveryBitOfTheControlsIsAnsweredAndNoOther) {
    expectFrame("a", "b", kBlack);
    std::string reminders;
    for (unsigned bit = 0; bit < 32; ++bit) {
        const std::uint32_t word = 1U << bit;
        if (word == kClockwise || word == kClockwise << 1 || word == kClockwise << 2 ||
            word == kClockwise << 3) {
            continue;  // these are what is awaited
        }
        expectPoll(word);
        if ((word & 0xF9FF0000U) != 0) {
            expectReminder();
            reminders += "Waiting for:\n\ta\n\tb\n";
        }
    }
    expectPoll(kClockwise);
    EXPECT_EQ(reminders, printed([this] { check(ui(), "a", "b", clockwise); }));
}

TEST_F(CheckTest, AnEmptyPredicateThrowsAfterThePoll) {
    expectFrame("a", "b", kBlack);
    expectPoll(kNothing);
    EXPECT_THROW(check(ui(), "a", "b", Predicate()), std::bad_function_call);
}

TEST_F(CheckTest, AllControlsInTheirTurnShowSuccessOnGreen) {
    expectFrame("< Press ", "< Button", kBlack);
    expectPoll(kLeft);
    expectFrame("Press >", "Button >", kBlack);
    expectPoll(kRight);
    expectFrame("Press red", "Button", kBlack);
    expectPoll(kRed);
    expectFrame("< Turn rotary", "< left (ccw)", kBlack);
    expectPoll(kCounterClockwise);
    expectFrame("Turn rotary >", "right (cw) >", kBlack);
    expectPoll(kClockwise);
    expectFrame("Result:", "Success", kGreen);
    EXPECT_EQ("", printed([this] { checkAllControls(ui()); }));
}

}  // namespace
