// Whole files looked at: what they are taken for, how large their pictures are, what is damaged.
#include "Tools/overlayview/View.h"

#include <gmock/gmock.h>

#include "Tests/overlayview/OverlayBytes.h"

namespace {

using overlays::bytes;
using overlays::container;
using overlays::File;
using overlays::operator+;
using overlays::run;
using overlays::whiteHundred;
using overlays::words;
using overlayview::Kind;
using overlayview::look;
using overlayview::Request;
using overlayview::RowOrder;
using overlayview::Size;
using overlayview::View;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Request drawn() {
    Request request;
    request.wantsPicture = true;
    return request;
}

Request drawnWide(std::uint32_t width) {
    Request request = drawn();
    request.width = width;
    return request;
}

/// Video grey of so many pixels.
File greyPattern(std::size_t pixels) {
    File body;
    for (std::size_t i = 0; i < pixels / 2; ++i) {
        overlays::append(body, 0x64806480);
    }
    return body;
}

TEST(ViewTest, AHundredWhitePixelsOfTenRows) {
    const View view = look(whiteHundred(), drawnWide(10));
    EXPECT_EQ(Kind::Runs, view.description.kind);
    EXPECT_EQ(7U, view.description.header->identifier);
    EXPECT_EQ(32U, view.description.header->bodyWords);
    EXPECT_EQ(120U, view.description.paddingBytes) << "32 words less the run and the end word";
    EXPECT_EQ((Size{10, 10}), view.description.size);
    EXPECT_THAT(view.description.findings.damage, IsEmpty());
    ASSERT_TRUE(view.picture);
    EXPECT_THAT(view.picture->pixels, testing::Each(overlayview::Rgba{255, 255, 255, 255}));
}

TEST(ViewTest, NothingIsDrawnThatIsNotWanted) {
    Request request;
    request.width = 10;
    EXPECT_FALSE(look(whiteHundred(), request).picture);
}

TEST(ViewTest, WellKnownSizesNeedNoWidth) {
    for (const Size size :
         {Size{1920, 1080}, Size{1280, 720}, Size{720, 576}, Size{720, 480}, Size{160, 48}}) {
        File body;
        std::uint32_t left = size.width * size.height;
        for (; left > 16383; left -= 16383) {
            overlays::append(body, run(16383, 29, 16, 16, 4));
        }
        overlays::append(body, run(left, 29, 16, 16, 4));
        overlays::append(body, 0);
        const View view = look(container(1, body), drawn());
        EXPECT_EQ(size, view.description.size);
        EXPECT_TRUE(view.picture);
        EXPECT_THAT(view.description.findings.damage, IsEmpty());
    }
}

TEST(ViewTest, OtherSizesAskForAWidth) {
    const View view = look(whiteHundred(), drawn());
    EXPECT_FALSE(view.picture);
    EXPECT_FALSE(view.description.size);
    EXPECT_THAT(view.description.findings.lacking,
                ElementsAre("the file's 100 pixels are no well-known size: say --width N"));
}

TEST(ViewTest, AWidthThatMakesNoWholeRowsDoesNotFitASoundFile) {
    EXPECT_THAT(look(whiteHundred(), drawnWide(7)).description.findings.lacking,
                ElementsAre(HasSubstr("100 pixels are no picture of 7x15")));
    Request request = drawnWide(10);
    request.height = 9;
    EXPECT_FALSE(look(whiteHundred(), request).picture);
}

TEST(ViewTest, TheLastRowOfADamagedFileMayBeIncomplete) {
    File file = whiteHundred();
    file.resize(16);
    const View view = look(file, drawnWide(7));
    EXPECT_EQ((Size{7, 15}), view.description.size);
    ASSERT_TRUE(view.picture);
    EXPECT_EQ(255, view.picture->pixels[99].alpha);
    EXPECT_EQ(0, view.picture->pixels[100].alpha);
}

TEST(ViewTest, AHeightPutsTheRowsOfADamagedInterlacedFileInPlace) {
    File file = whiteHundred();  // 10 rows of 20 of which the even ones are there
    file.resize(16);
    Request request = drawnWide(20);
    request.height = 10;
    request.order = RowOrder::Interlaced;
    const View view = look(file, request);
    ASSERT_TRUE(view.picture);
    for (std::size_t row = 0; row < 10; ++row) {
        EXPECT_EQ(row % 2 == 0 ? 255 : 0, view.picture->pixels[row * 20].alpha) << row;
    }
}

TEST(ViewTest, RunsThatClaimTooMuchAreNotDrawn) {
    File body;
    for (int i = 0; i < 4096; ++i) {
        overlays::append(body, run(16383, 29, 16, 16, 4));
    }
    overlays::append(body, 0);
    for (const std::uint32_t width : {1U, 16383U, 65535U}) {
        Request request = drawnWide(width);
        request.kind = Kind::Runs;
        const View view = look(container(0, body), request);
        EXPECT_FALSE(view.picture);
        EXPECT_EQ(4096U * 16383, view.description.pixels);
        EXPECT_THAT(view.description.findings.lacking, testing::SizeIs(1)) << width;
    }
    Request tooLarge = drawnWide(65535);
    tooLarge.height = 65535;
    EXPECT_THAT(look(whiteHundred(), tooLarge).description.findings.lacking,
                ElementsAre(HasSubstr("too large")));
}

TEST(ViewTest, AColumnOfAMillionPixelsIsDrawnAndALongerOneIsNot) {
    File body;
    for (int i = 0; i < 61; ++i) {
        overlays::append(body, run(16383, 29, 16, 16, 4));
    }
    const File fits = container(0, body + words({run(637, 29, 16, 16, 4), 0}));
    EXPECT_EQ((Size{1, 1'000'000}), look(fits, drawnWide(1)).description.size);
    EXPECT_TRUE(look(fits, drawnWide(1)).picture);
    const File longer = container(0, body + words({run(638, 29, 16, 16, 4), 0}));
    EXPECT_FALSE(look(longer, drawnWide(1)).picture);
    EXPECT_THAT(look(longer, drawnWide(1)).description.findings.lacking,
                ElementsAre("a picture of 1x1000001 is too large: another --width"));
}

TEST(ViewTest, NoPixelsMakeNoPicture) {
    const File empty = container(0, words({0}));
    EXPECT_EQ(Kind::Runs, look(empty, drawn()).description.kind);
    EXPECT_THAT(look(empty, drawnWide(10)).description.findings.lacking,
                ElementsAre("there are no pixels to draw"));
    EXPECT_FALSE(look(empty, drawnWide(10)).picture);
}

TEST(ViewTest, APatternOfAKnownSizeIsRecognised) {
    const View view = look(container(3, greyPattern(160 * 48)), drawn());
    EXPECT_EQ(Kind::Pattern, view.description.kind);
    EXPECT_EQ((Size{160, 48}), view.description.size);
    EXPECT_EQ(0U, view.description.paddingBytes);
    EXPECT_EQ(1U, view.description.colours);
    EXPECT_TRUE(view.picture);
}

TEST(ViewTest, APatternOfAnotherSizeIsRecognisedByItsWidth) {
    const File file = container(3, greyPattern(90));
    EXPECT_EQ(Kind::Unknown, look(file, drawn()).description.kind);
    const View view = look(file, drawnWide(30));
    EXPECT_EQ(Kind::Pattern, view.description.kind);
    EXPECT_EQ((Size{30, 3}), view.description.size);
    EXPECT_EQ(76U, view.description.paddingBytes);
    EXPECT_EQ(Kind::Unknown, look(file, drawnWide(200)).description.kind);
}

TEST(ViewTest, ACutPatternKeepsTheSizeThatItsHeaderTells) {
    File file = container(3, greyPattern(160 * 48));
    file.resize(1000);
    const View view = look(file, drawn());
    EXPECT_EQ((Size{160, 48}), view.description.size);
    EXPECT_EQ(494U, view.description.pixels);
    EXPECT_THAT(view.description.findings.damage, ElementsAre(HasSubstr("cut")));
    ASSERT_TRUE(view.picture);
    EXPECT_EQ(255, view.picture->pixels[493].alpha);
    EXPECT_EQ(0, view.picture->pixels[494].alpha);
}

TEST(ViewTest, PatternsHaveEvenWidths) {
    Request request = drawnWide(45);
    request.kind = Kind::Pattern;
    EXPECT_THAT(look(container(3, greyPattern(90)), request).description.findings.lacking,
                ElementsAre(HasSubstr("an even --width")));
}

TEST(ViewTest, WhatNeitherFitsRunsNorAPatternIsUnknown) {
    const File file = container(0, bytes({0, 1, 2, 3}));
    const View view = look(file, drawn());
    EXPECT_EQ(Kind::Unknown, view.description.kind);
    EXPECT_THAT(view.description.findings.lacking, ElementsAre(HasSubstr("--as")));
}

TEST(ViewTest, CharactersAreFontsUnlessTheyAreSaidToBeNumbers) {
    Request request = drawn();
    request.sheet = overlayview::SheetLayout{{32, 4}, 2};
    File body(64);
    body[63] = std::byte{1};
    const View font = look(container(0, body), request);
    EXPECT_EQ(Kind::Font, font.description.kind);
    EXPECT_EQ((Size{64, 8}), font.description.size) << "128 bytes of body, padding included";
    request.kind = Kind::Numbers;
    const View numbers = look(container(0, body), request);
    EXPECT_EQ((Size{64, 16}), numbers.description.size);
    EXPECT_TRUE(numbers.picture);
}

TEST(ViewTest, CharactersNeedALayout) {
    Request request = drawn();
    request.kind = Kind::Font;
    EXPECT_THAT(look(container(0, File(128)), request).description.findings.lacking,
                ElementsAre(HasSubstr("--cell WIDTHxHEIGHT --columns N")));
    request.kind = Kind::Numbers;
    request.sheet = overlayview::SheetLayout{{64, 4}, 2};
    EXPECT_THAT(look(container(0, File(128)), request).description.findings.lacking,
                ElementsAre(HasSubstr("at most 32 pixels wide")));
}

TEST(ViewTest, CellsThatLosePixelsAreNoted) {
    Request request = drawn();
    request.sheet = overlayview::SheetLayout{{24, 4}, 2};
    EXPECT_THAT(look(container(0, File(128)), request).description.findings.notes,
                ElementsAre(HasSubstr("multiples of 32")));
}

TEST(ViewTest, ASheetThatIsTooLargeIsNotDrawn) {
    Request request = drawn();
    request.sheet = overlayview::SheetLayout{{4096, 4096}, 65535};
    EXPECT_THAT(look(container(0, File(128)), request).description.findings.lacking,
                ElementsAre(HasSubstr("too large")));
    request.sheet = overlayview::SheetLayout{{32, 1}, 65535};  // 2,097,120 pixels side by side
    EXPECT_THAT(look(container(0, File(128)), request).description.findings.lacking,
                ElementsAre(HasSubstr("too large")));
    request.sheet = overlayview::SheetLayout{{32, 1}, 1};
    EXPECT_THAT(look(container(0, {}), request).description.findings.lacking,
                ElementsAre("there are no characters to draw"));
}

TEST(ViewTest, ARawFileHasNoHeader) {
    Request request = drawnWide(10);
    request.rawOffset = 12;
    const View view = look(whiteHundred(), request);
    EXPECT_FALSE(view.description.header);
    EXPECT_TRUE(view.picture);
    request = drawn();
    request.rawOffset = 0;
    EXPECT_EQ(Kind::Unknown, look(whiteHundred(), request).description.kind)
        << "the marker is no run: its coverage would be 7";
}

TEST(ViewTest, AFileCutAtAnyByteTellsAndDrawsWhatIsLeft) {
    const File whole = whiteHundred();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const File file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        Request request = drawnWide(10);
        const View view = look(file, request);
        EXPECT_THAT(view.description.findings.damage, testing::Not(IsEmpty())) << size;
        EXPECT_EQ(size >= 16, view.picture.has_value()) << size;
        EXPECT_EQ(size >= 16 ? Kind::Runs : Kind::Unknown, view.description.kind) << size;
    }
}

}  // namespace
