#include "Tools/overlayview/RunLengths.h"

#include <gmock/gmock.h>

#include "Tests/overlayview/OverlayBytes.h"

namespace {

using overlays::File;
using overlays::run;
using overlays::words;
using overlayview::Findings;
using overlayview::Picture;
using overlayview::Rgba;
using overlayview::RowOrder;
using overlayview::RunLengths;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint32_t kA = 4U << 15 | 29 << 10 | 16 << 5 | 16;
constexpr std::uint32_t kB = 4U << 15 | 9 << 10 | 30 << 5 | 14;

std::uint32_t length(std::uint32_t count, std::uint32_t code) {
    return count << 18 | code;
}

Findings reportOf(const RunLengths& runs) {
    Findings findings;
    runs.report(findings);
    return findings;
}

TEST(RunLengthsTest, RunsAreCounted) {
    const File body = words({length(3, kA), length(2, 0), length(5, kB), length(1, kA), 0, 0, 0});
    const RunLengths runs(body);
    EXPECT_EQ(4U, runs.facts().words);
    EXPECT_EQ(4U, runs.facts().runs);
    EXPECT_EQ(5U, runs.facts().longest);
    EXPECT_EQ(11U, runs.facts().pixels);
    EXPECT_EQ(9U, runs.facts().covered);
    EXPECT_EQ(3U, runs.facts().colours);
    EXPECT_EQ(2U, runs.facts().paddingWords);
    EXPECT_TRUE(runs.sound());
    EXPECT_THAT(reportOf(runs).damage, IsEmpty());
    EXPECT_THAT(reportOf(runs).notes, IsEmpty());
}

TEST(RunLengthsTest, ALongRunInFullWordsIsOne) {
    const File body = words({length(16383, kA), length(1, kA), 0});
    const RunLengths runs(body);
    EXPECT_EQ(2U, runs.facts().words);
    EXPECT_EQ(1U, runs.facts().runs);
    EXPECT_EQ(16384U, runs.facts().longest);
    EXPECT_TRUE(runs.sound());
}

TEST(RunLengthsTest, ARunThatIsSplitBeforeItIsFullIsOddButHarmless) {
    const File body = words({length(16382, kA), length(2, kA), 0});
    const RunLengths runs(body);
    EXPECT_EQ(16384U, runs.facts().longest);
    EXPECT_FALSE(runs.sound());
    EXPECT_THAT(reportOf(runs).damage, IsEmpty());
    EXPECT_THAT(reportOf(runs).notes, ElementsAre(HasSubstr("1 run words go on")));
}

TEST(RunLengthsTest, AMissingEndWordIsDamage) {
    const File body = words({length(3, kA)});
    const RunLengths runs(body);
    EXPECT_EQ(3U, runs.facts().pixels);
    EXPECT_TRUE(runs.plausible());
    EXPECT_FALSE(runs.sound());
    EXPECT_THAT(reportOf(runs).damage, ElementsAre(HasSubstr("no end word")));
}

TEST(RunLengthsTest, AnEmptyBodyHasNoEndWord) {
    EXPECT_THAT(reportOf(RunLengths({})).damage, ElementsAre(HasSubstr("no end word")));
}

TEST(RunLengthsTest, ARunOfNoPixelsIsDamageAndSkipped) {
    const File body = words({length(3, kA), length(0, kB), length(4, kB), 0});
    const RunLengths runs(body);
    EXPECT_EQ(7U, runs.facts().pixels);
    EXPECT_EQ(2U, runs.facts().colours);
    EXPECT_FALSE(runs.plausible());
    EXPECT_THAT(reportOf(runs).damage, ElementsAre(HasSubstr("1 run words have a length of 0")));
    EXPECT_THAT(runs.codes({7, 1}, RowOrder::Progressive), ElementsAre(kA, kA, kA, kB, kB, kB, kB));
}

TEST(RunLengthsTest, WordsBehindTheEndAreDamageAndNotDrawn) {
    const File body = words({length(3, kA), 0, length(4, kB), 0});
    const RunLengths runs(body);
    EXPECT_EQ(3U, runs.facts().pixels);
    EXPECT_EQ(1U, runs.facts().paddingWords);
    EXPECT_THAT(reportOf(runs).damage, ElementsAre(HasSubstr("1 words that are not zero")));
    EXPECT_THAT(runs.codes({4, 1}, RowOrder::Progressive), ElementsAre(kA, kA, kA, 0));
}

TEST(RunLengthsTest, ThirtyOneZeroWordsPadAndThirtyTwoAreTooMany) {
    File body = words({length(3, kA), 0});
    body.resize(4 * (2 + 31));
    EXPECT_TRUE(RunLengths(body).sound());
    body.resize(4 * (2 + 32));
    EXPECT_FALSE(RunLengths(body).plausible());
    EXPECT_THAT(reportOf(RunLengths(body)).damage, ElementsAre(HasSubstr("32 zero words")));
}

TEST(RunLengthsTest, ACoverageAboveFourIsDamageAndDrawnOpaque) {
    const File body = words({run(1, 29, 16, 16, 5), 0});
    const RunLengths runs(body);
    EXPECT_THAT(reportOf(runs).damage, ElementsAre(HasSubstr("1 run words have a coverage above 4")));
    EXPECT_EQ((Rgba{255, 255, 255, 255}), runs.picture({1, 1}, RowOrder::Progressive).pixels[0]);
}

TEST(RunLengthsTest, BytesBehindTheLastWholeWordAreLeftOut) {
    File body = words({length(3, kA), length(3, kB)});
    body.pop_back();
    EXPECT_EQ(3U, RunLengths(body).facts().pixels);
}

TEST(RunLengthsTest, RunsGoOnAcrossRows) {
    const File body = words({length(3, kA), length(3, kB), 0});
    EXPECT_THAT(RunLengths(body).codes({2, 3}, RowOrder::Progressive), ElementsAre(kA, kA, kA, kB, kB, kB));
}

TEST(RunLengthsTest, InterlacedRowsArePutBackInPlaceAcrossTheFields) {
    // stored 0, 2, 1
    const File body = words({length(2, kA), length(3, kB), length(1, 0), 0});
    EXPECT_THAT(RunLengths(body).codes({2, 3}, RowOrder::Interlaced), ElementsAre(kA, kA, kB, 0, kB, kB));
}

TEST(RunLengthsTest, WhatIsTooMuchIsLeftOutAndWhatIsTooLittleIsTransparent) {
    const File body = words({length(16383, kA), 0});
    EXPECT_THAT(RunLengths(body).codes({1, 2}, RowOrder::Interlaced), ElementsAre(kA, kA));
    const Picture picture = RunLengths({}).picture({2, 1}, RowOrder::Progressive);
    EXPECT_EQ(0, picture.pixels[0].alpha);
    EXPECT_EQ(0, picture.pixels[1].alpha);
}

TEST(RunLengthsTest, ManyLongRunsAreCountedWithoutOverflow) {
    File body;
    for (int i = 0; i < 300'000; ++i) {
        overlays::append(body, length(16383, i % 2 == 0 ? kA : kB));
    }
    EXPECT_EQ(300'000ULL * 16383, RunLengths(body).facts().pixels);
}

// Blue in BT.601 is Y 41, Cb 240, Cr 110 of 8 bits: codes 5, 30, 14.
TEST(RunLengthsTest, ChromaThatAPixelDoesNotStoreComesFromTheOtherOfItsPair) {
    const File body =
        words({run(1, 5, 30, 0, 4), run(1, 5, 0, 14, 4), run(1, 29, 16, 0, 4), run(1, 29, 0, 16, 4), 0});
    const Picture stored = RunLengths(body).picture({4, 1}, RowOrder::Progressive);
    const File whole = words({run(2, 5, 30, 14, 4), run(2, 29, 16, 16, 4), 0});
    EXPECT_EQ(RunLengths(whole).picture({4, 1}, RowOrder::Progressive).pixels, stored.pixels);
}

TEST(RunLengthsTest, ChromaComesFromTheOtherSideWhereThePairHasNone) {
    const File body =
        words({run(1, 5, 30, 0, 4), run(1, 5, 0, 14, 4), run(1, 5, 30, 0, 4), run(1, 0, 0, 0, 0), 0});
    const Picture picture = RunLengths(body).picture({4, 1}, RowOrder::Progressive);
    EXPECT_EQ(picture.pixels[0], picture.pixels[2]);
    EXPECT_EQ(0, picture.pixels[3].alpha);
}

TEST(RunLengthsTest, ALonelyPixelsMissingChromaIsNeutral) {
    const File body = words({run(1, 29, 16, 0, 4), 0});
    EXPECT_EQ((Rgba{255, 255, 255, 255}), RunLengths(body).picture({1, 1}, RowOrder::Progressive).pixels[0]);
}

}  // namespace
