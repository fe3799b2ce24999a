#include "Tools/boardsim/Models/PanelScreen.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using boardsim::PanelScreen;
using boardsim::ScreenAnswer;
using boardsim::ScreenEvent;
using boardsim::ScreenFault;
using boardsim::ScreenHabit;

constexpr std::size_t kFrame = 15360;

std::vector<std::byte> bytes(std::size_t count, unsigned value) {
    return std::vector<std::byte>(count, static_cast<std::byte>(value));
}

std::vector<std::byte> bytes(const std::string& text) {
    const auto all = std::as_bytes(std::span(text));
    return {all.begin(), all.end()};
}

class PanelScreenTest : public testing::Test {
protected:
    void watch(PanelScreen& screen) {
        screen.listen([this](const ScreenEvent& event) { kinds.push_back(event.kind); });
    }

    std::vector<ScreenEvent::Kind> kinds;
};

TEST_F(PanelScreenTest, StartsDarkAndWithoutAPicture) {
    PanelScreen screen;
    std::byte lit{2};
    EXPECT_EQ(1U, screen.read(0, {&lit, 1}).count);
    EXPECT_EQ(std::byte{0}, lit);
    EXPECT_TRUE(screen.frame().empty());
}

TEST_F(PanelScreenTest, AWholeFrameIsKeptAsItWasWritten) {
    PanelScreen screen;
    watch(screen);
    std::vector<std::byte> frame = bytes(kFrame, 0);
    for (std::size_t i = 0; i < frame.size(); ++i) {
        frame[i] = static_cast<std::byte>(i * 7);
    }
    EXPECT_EQ(kFrame, screen.write(0, frame).count);
    EXPECT_TRUE(std::equal(frame.begin(), frame.end(), screen.frame().begin(), screen.frame().end()));
    EXPECT_EQ(std::vector{ScreenEvent::Kind::Frame}, kinds);
}

TEST_F(PanelScreenTest, TwoBytesAreAStateAndNoPicture) {
    PanelScreen screen;
    watch(screen);
    EXPECT_EQ(2U, screen.write(0, bytes("1\n")).count);
    EXPECT_EQ(std::vector{ScreenEvent::Kind::State}, kinds);
    EXPECT_TRUE(screen.frame().empty());
}

TEST_F(PanelScreenTest, StateOneLightsZeroDarkensAndOthersChangeNothing) {
    PanelScreen screen;
    screen.write(0, bytes("1\n"));
    EXPECT_TRUE(screen.lit());
    screen.write(0, bytes("7\n"));
    EXPECT_TRUE(screen.lit());
    screen.write(0, bytes("0\n"));
    EXPECT_FALSE(screen.lit());
    screen.write(0, bytes("7\n"));
    EXPECT_FALSE(screen.lit());
}

TEST_F(PanelScreenTest, ReadsOneByteAndNothingBehindIt) {
    PanelScreen screen;
    screen.write(0, bytes("1\n"));
    std::vector<std::byte> into = bytes(10, 9);
    EXPECT_EQ(1U, screen.read(0, into).count);
    EXPECT_EQ(std::byte{1}, into[0]);
    EXPECT_EQ(std::byte{9}, into[1]);
    EXPECT_EQ(0U, screen.read(1, into).count);
    EXPECT_FALSE(screen.read(1, into).refused());
}

TEST_F(PanelScreenTest, PiecesFromTheStartToTheEndMakeAFrame) {
    PanelScreen screen;
    watch(screen);
    screen.write(0, bytes(15000, 0xAA));
    EXPECT_TRUE(screen.frame().empty());
    screen.write(15000, bytes(358, 0xBB));
    screen.write(15358, bytes(2, 0xCC));
    ASSERT_EQ(kFrame, screen.frame().size());
    EXPECT_EQ(std::byte{0xAA}, screen.frame()[14999]);
    EXPECT_EQ(std::byte{0xBB}, screen.frame()[15357]);
    EXPECT_EQ(std::byte{0xCC}, screen.frame()[15359]);
    EXPECT_EQ((std::vector{ScreenEvent::Kind::Piece, ScreenEvent::Kind::Piece, ScreenEvent::Kind::Piece,
                           ScreenEvent::Kind::Frame}),
              kinds);
}

TEST_F(PanelScreenTest, PiecesWithAGapMakeNoFrame) {
    PanelScreen screen;
    screen.write(0, bytes(1000, 1));
    screen.write(1001, bytes(kFrame - 1001, 1));
    EXPECT_TRUE(screen.frame().empty());
}

TEST_F(PanelScreenTest, AFrameHalfWrittenAgainLeavesTheShownOneWhole) {
    PanelScreen screen;
    screen.write(0, bytes(kFrame, 1));
    screen.write(0, bytes(1000, 2));
    EXPECT_EQ(std::byte{1}, screen.frame()[0]);
    screen.write(1000, bytes(kFrame - 1000, 2));
    EXPECT_EQ(std::byte{2}, screen.frame()[0]);
    EXPECT_EQ(std::byte{2}, screen.frame()[kFrame - 1]);
}

struct Wrong {
    std::uint64_t offset;
    std::size_t size;
};

class WrongScreenUse : public testing::TestWithParam<Wrong> {};

TEST_P(WrongScreenUse, IsRefusedAndChangesNothing) {
    PanelScreen screen;
    screen.write(0, bytes(kFrame, 5));
    const ScreenAnswer answer = screen.write(GetParam().offset, bytes(GetParam().size, '1'));
    EXPECT_EQ(std::errc::invalid_argument, answer.error);
    EXPECT_EQ(0U, answer.count);
    EXPECT_FALSE(screen.lit());
    EXPECT_EQ(std::byte{5}, screen.frame()[0]);
}

INSTANTIATE_TEST_SUITE_P(Writes, WrongScreenUse,
                         testing::Values(Wrong{0, 1}, Wrong{0, kFrame + 1}, Wrong{1, kFrame},
                                         Wrong{kFrame, 1}, Wrong{kFrame, 2}, Wrong{kFrame - 1, 2},
                                         Wrong{~std::uint64_t{0}, 3}));

TEST_F(PanelScreenTest, AnEmptyWriteIsTakenAndMeansNothing) {
    PanelScreen screen;
    watch(screen);
    EXPECT_FALSE(screen.write(0, {}).refused());
    EXPECT_TRUE(kinds.empty());
}

TEST_F(PanelScreenTest, TakingOneByteAtATimeEndsInTheSameFrame) {
    PanelScreen screen({}, {ScreenHabit::TakesOneByte});
    std::vector<std::byte> frame = bytes(kFrame, 0);
    for (std::size_t i = 0; i < frame.size(); ++i) {
        frame[i] = static_cast<std::byte>(i % 251);
    }
    for (std::size_t done = 0; done < kFrame;) {
        const ScreenAnswer answer = screen.write(done, std::span(frame).subspan(done));
        ASSERT_EQ(1U, answer.count);
        done += answer.count;
    }
    EXPECT_TRUE(std::equal(frame.begin(), frame.end(), screen.frame().begin(), screen.frame().end()));
}

TEST_F(PanelScreenTest, TakingOneByteOfAStateStillSwitches) {
    PanelScreen screen({}, {ScreenHabit::TakesOneByte});
    EXPECT_EQ(1U, screen.write(0, bytes("1\n")).count);
    EXPECT_TRUE(screen.lit());
}

TEST_F(PanelScreenTest, AFailingScreenRefusesEverything) {
    PanelScreen screen({}, {ScreenHabit::Fails});
    std::byte lit{2};
    EXPECT_EQ(std::errc::io_error, screen.write(0, bytes(kFrame, 1)).error);
    EXPECT_EQ(std::errc::io_error, screen.write(0, bytes("1\n")).error);
    EXPECT_EQ(std::errc::io_error, screen.read(0, {&lit, 1}).error);
    EXPECT_EQ(std::byte{2}, lit);
}

TEST_F(PanelScreenTest, AScreenRunsFullAfterItsCapacity) {
    PanelScreen screen({}, {ScreenHabit::RunsFull, 15362});
    EXPECT_EQ(kFrame, screen.write(0, bytes(kFrame, 1)).count);
    EXPECT_EQ(2U, screen.write(0, bytes("1\n")).count);
    EXPECT_EQ(std::errc::no_space_on_device, screen.write(0, bytes("1\n")).error);
}

TEST_F(PanelScreenTest, AScreenThatRunsFullWithinAWriteTakesWhatFits) {
    PanelScreen screen({}, {ScreenHabit::RunsFull, 100});
    EXPECT_EQ(100U, screen.write(0, bytes(kFrame, 1)).count);
    EXPECT_EQ(std::errc::no_space_on_device, screen.write(100, bytes(kFrame - 100, 1)).error);
    EXPECT_TRUE(screen.frame().empty());
}

TEST_F(PanelScreenTest, RefusalsAreTold) {
    PanelScreen screen;
    watch(screen);
    screen.write(0, bytes("x"));
    EXPECT_EQ(std::vector{ScreenEvent::Kind::Refused}, kinds);
}

}  // namespace
