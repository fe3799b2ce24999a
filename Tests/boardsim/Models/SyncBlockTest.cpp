#include "Tools/boardsim/Models/SyncBlock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

using boardsim::FrameRate;
using boardsim::ModelTime;
using boardsim::SyncBlock;
using boardsim::SyncSettings;
using namespace std::chrono_literals;

constexpr ModelTime kPowerOn{1h};
constexpr std::uint32_t kMidnight = 24 * 3600;

/// A block in memory of the test's.
struct Board {
    explicit Board(const SyncSettings& settings) : block(settings), words(block.powerOnValues()) {
        block.attach(words, kPowerOn);
    }
    std::uint32_t word(std::size_t offset) const { return words[offset / 4]; }
    std::uint64_t timeCode() const { return std::uint64_t{word(0x3C)} << 32 | word(0x38); }

    SyncBlock block;
    alignas(8) SyncBlock::Words words;
};

SyncSettings runningAt(FrameRate rate, const boardsim::TimeCode& from = {}) {
    SyncSettings settings;
    settings.rate = rate;
    settings.timeCode = from;
    return settings;
}

TEST(SyncBlockTest, HasItsIdentitiesAfterPowerOn) {
    SyncSettings settings;
    settings.id = 0x00A1B2C3D4E5F6;
    settings.master = 0x12345678901234;
    settings.networkId = 4711;
    const Board board(settings);
    EXPECT_EQ(0xC3D4E5F6U, board.word(0x04));
    EXPECT_EQ(0x0000A1B2U, board.word(0x08));
    EXPECT_EQ(0x78901234U, board.word(0x1C));
    EXPECT_EQ(0x00123456U, board.word(0x20));
    EXPECT_EQ(4711U, board.word(0x10));
    EXPECT_EQ(0U, board.word(0x34));
}

TEST(SyncBlockTest, AnIdHas56Bits) {
    SyncSettings settings;
    settings.id = ~0ULL;
    EXPECT_EQ(0x00FFFFFFU, Board(settings).word(0x08));
}

TEST(SyncBlockTest, TheStatusTellsMasterAndRate) {
    for (const auto& [isMaster, rate, status] : {std::tuple(false, FrameRate::Fps30, 0x00000000U),
                                                 {true, FrameRate::Fps30, 0x00000001U},
                                                 {false, FrameRate::Fps25, 0x04000000U},
                                                 {true, FrameRate::Fps25, 0x04000001U}}) {
        SyncSettings settings;
        settings.isMaster = isMaster;
        settings.rate = rate;
        EXPECT_EQ(status, Board(settings).word(0x0C));
    }
}

TEST(SyncBlockTest, AFrameCountsTimeCodeAndSyncWord) {
    Board board(runningAt(FrameRate::Fps25, {12 * 3600 + 34 * 60 + 56, 24, {0x21, 0x43, 0x65, 0x87}}));
    EXPECT_EQ(0x45362214U, board.word(0x38));
    EXPECT_EQ(0x81726354U, board.word(0x3C));
    board.block.runUntil(kPowerOn + 40ms);
    EXPECT_EQ(0x45372010U, board.word(0x38));
    EXPECT_EQ(0x81726354U, board.word(0x3C));
    EXPECT_EQ(1U, board.word(0x34));
}

TEST(SyncBlockTest, NothingElseMoves) {
    SyncSettings settings = runningAt(FrameRate::Fps30);
    settings.id = 0x11223344556677;
    settings.master = 0x21223344556677;
    settings.networkId = 5;
    Board board(settings);
    const SyncBlock::Words before = board.words;
    board.block.runUntil(kPowerOn + 10s);
    for (const std::size_t word : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}) {
        EXPECT_EQ(before[word], board.words[word]) << word;
    }
}

TEST(SyncBlockTest, TheFirstFrameLastsAsLongAsAllOthers) {
    Board board(runningAt(FrameRate::Fps25));
    board.block.runUntil(kPowerOn + 39999999ns);
    EXPECT_EQ(0U, board.timeCode());
    board.block.runUntil(kPowerOn + 40ms);
    EXPECT_EQ(1U, board.timeCode());
    board.block.runUntil(kPowerOn + 40ms);
    EXPECT_EQ(1U, board.timeCode());
}

TEST(SyncBlockTest, ThirtyFramesASecondDoNotDrift) {
    Board board(runningAt(FrameRate::Fps30));
    std::uint64_t frames = 0;
    for (ModelTime now = *board.block.nextFrame(); now < kPowerOn + 1h; now = *board.block.nextFrame()) {
        board.block.runUntil(now);
        ++frames;
        ASSERT_EQ(frames, board.word(0x34)) << "a frame begins when it is said to begin";
    }
    EXPECT_EQ(3600U * 30 - 1, frames);
    EXPECT_EQ(kPowerOn + 1h, board.block.nextFrame());
}

TEST(SyncBlockTest, FramesThatNobodyLetPassAreCaughtUp) {
    Board board(runningAt(FrameRate::Fps30, {100, 10}));
    board.block.runUntil(kPowerOn + 61s + 100ms);
    EXPECT_EQ(encode(boardsim::TimeCode{161, 13}), board.timeCode());
    EXPECT_EQ(61U * 30 + 3, board.word(0x34));
}

TEST(SyncBlockTest, RunsOverMidnight) {
    Board board(runningAt(FrameRate::Fps25, {kMidnight - 1, 24, {0x0F, 0, 0, 0x80}}));
    board.block.runUntil(kPowerOn + 40ms);
    EXPECT_EQ(0x8000'0000'0000'00F0U, board.timeCode());
    board.block.runUntil(kPowerOn + 80ms);
    EXPECT_EQ(0x8000'0000'0000'00F1U, board.timeCode());
}

TEST(SyncBlockTest, TheTimeCodeRunsOnFromWhatAProgramWrote) {
    Board board(runningAt(FrameRate::Fps25));
    board.block.runUntil(kPowerOn + 100ms);
    board.words[0x3C / 4] = 0x01020304;
    board.words[0x38 / 4] = 0x05060007;
    board.block.runUntil(kPowerOn + 120ms);
    EXPECT_EQ(0x01020304'05060008U, board.timeCode());
}

TEST(SyncBlockTest, RestsUntilItHasRegisters) {
    SyncBlock block(SyncSettings{});
    EXPECT_FALSE(block.nextFrame());
    block.runUntil(kPowerOn + 1h);
    EXPECT_EQ(0U, block.read(0x34, 4).value);
}

TEST(SyncBlockTest, AClockThatStandsBeforeItsStartMovesNothing) {
    Board board(runningAt(FrameRate::Fps25));
    board.block.runUntil(kPowerOn - 1h);
    EXPECT_EQ(0U, board.timeCode());
}

TEST(SyncBlockTest, OnlyNetworkIdAndTimeCodeCanBeWritten) {
    Board board(SyncSettings{});
    for (std::uint32_t offset = 0; offset < 0x40; offset += 4) {
        const bool isTaken = !board.block.write(offset, 4, 1);
        EXPECT_EQ(offset == 0x10 || offset == 0x38 || offset == 0x3C, isTaken) << offset;
    }
    EXPECT_TRUE(board.block.write(0x10, 2, 1));
    EXPECT_TRUE(board.block.write(0x12, 4, 1));
}

TEST(SyncBlockTest, RegistersReadInEveryWidthInsideTheBlock) {
    SyncSettings settings;
    settings.id = 0x11223344556677;
    Board board(settings);
    EXPECT_EQ(0x44556677U, board.block.read(0x04, 4).value);
    EXPECT_EQ(0x11U, board.block.read(0x0A, 1).value);
    EXPECT_EQ(0x22334455U, board.block.read(0x06, 4).value);
    EXPECT_TRUE(board.block.read(0x3E, 4).refused);
    EXPECT_TRUE(board.block.read(0x00, 64).refused);
}

/// Both words at once, as no program can read them.
std::uint64_t readWhole(SyncBlock::Words& words) {
    return std::atomic_ref(*reinterpret_cast<std::uint64_t*>(&words[0x38 / 4])).load();
}

TEST(SyncBlockTest, AWriteBetweenTwoFramesIsNeverLost) {
    Board board(runningAt(FrameRate::Fps30, {kMidnight - 60, 0}));
    std::atomic<bool> isOver = false;
    std::thread running([&] {
        while (!isOver) {
            board.block.pass(1);
        }
    });
    std::atomic_ref groups(*reinterpret_cast<std::uint64_t*>(&board.words[0x38 / 4]));
    for (std::uint64_t mark = 0; mark < 20000; ++mark) {
        // What a frame leaves alone must be what was written last.
        const std::uint64_t written = (mark & 0xF) << 60 | (mark >> 4 & 0xF) << 52 | (mark >> 8 & 0xF) << 44;
        groups.store(written);
        ASSERT_EQ(written, readWhole(board.words) & 0xF0F0'F0F0'F0F0'F0F0U);
    }
    isOver = true;
    running.join();
}

}  // namespace
