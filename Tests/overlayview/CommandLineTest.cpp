#include "Tools/overlayview/CommandLine.h"

#include <gmock/gmock.h>

namespace {

using overlayview::CommandLine;
using overlayview::Kind;
using overlayview::Request;
using overlayview::RowOrder;
using overlayview::Size;
using overlayview::sizeNamed;
using testing::HasSubstr;

/// Reads the words while what is printed is caught.
class OverlayCommandLineTest : public testing::Test {
protected:
    CommandLine read(std::vector<std::string> words) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        CommandLine result = overlayview::readCommandLine(std::move(words));
        out = testing::internal::GetCapturedStdout();
        err = testing::internal::GetCapturedStderr();
        return result;
    }
    void expectUsageError(std::vector<std::string> words, const std::string& message) {
        const CommandLine result = read(std::move(words));
        EXPECT_FALSE(result.options);
        EXPECT_EQ(2, result.status);
        EXPECT_THAT(err, HasSubstr(message));
        EXPECT_EQ("", out);
    }

    std::string out;
    std::string err;
};

TEST_F(OverlayCommandLineTest, NothingIsSetThatWasNotAskedFor) {
    const CommandLine result = read({"f"});
    ASSERT_TRUE(result.options) << err;
    EXPECT_EQ("f", result.options->file);
    EXPECT_EQ("", result.options->pictureFile);
    EXPECT_FALSE(result.options->json);
    const Request& request = result.options->request;
    EXPECT_EQ(Kind::Unknown, request.kind);
    EXPECT_FALSE(request.rawOffset);
    EXPECT_FALSE(request.width);
    EXPECT_FALSE(request.height);
    EXPECT_FALSE(request.sheet);
    EXPECT_EQ(RowOrder::Progressive, request.order);
    EXPECT_FALSE(request.wantsPicture);
}

TEST_F(OverlayCommandLineTest, PictureOptionsAreTaken) {
    const CommandLine result =
        read({"--as", "rle", "f", "-o", "p.png", "--width", "20", "--height=10", "--interlaced", "--json"});
    ASSERT_TRUE(result.options) << err;
    EXPECT_EQ("p.png", result.options->pictureFile);
    EXPECT_TRUE(result.options->json);
    EXPECT_EQ(Kind::Runs, result.options->request.kind);
    EXPECT_EQ(20U, result.options->request.width);
    EXPECT_EQ(10U, result.options->request.height);
    EXPECT_EQ(RowOrder::Interlaced, result.options->request.order);
    EXPECT_TRUE(result.options->request.wantsPicture);
}

TEST_F(OverlayCommandLineTest, FontOptionsAreTaken) {
    const CommandLine result = read({"f", "--as=numbers", "--cell", "32x40", "--columns", "12", "--raw"});
    ASSERT_TRUE(result.options) << err;
    EXPECT_EQ(Kind::Numbers, result.options->request.kind);
    EXPECT_EQ((Size{32, 40}), result.options->request.sheet->cell);
    EXPECT_EQ(12U, result.options->request.sheet->columns);
    EXPECT_EQ(0U, result.options->request.rawOffset);
    EXPECT_EQ(64U, read({"f", "--offset", "64"}).options->request.rawOffset);
}

TEST_F(OverlayCommandLineTest, EveryKindHasItsName) {
    EXPECT_EQ(Kind::Unknown, read({"f", "--as", "auto"}).options->request.kind);
    EXPECT_EQ(Kind::Pattern, read({"f", "--as", "pattern"}).options->request.kind);
    EXPECT_EQ(Kind::Font, read({"f", "--as", "font"}).options->request.kind);
}

TEST_F(OverlayCommandLineTest, WrongUsageIsSaidOnStandardErrorWithStatusTwo) {
    expectUsageError({}, "FILE");
    expectUsageError({""}, "FILE");
    expectUsageError({"f", "g"}, "g");
    expectUsageError({"f", "--bogus"}, "--bogus");
    expectUsageError({"f", "-o", ""}, "--output");
    expectUsageError({"f", "--as", "jpeg"}, "jpeg");
    for (const char* number : {"0", "-1", "x", "1x", "65536", "99999999999999999999", "1.5", ""}) {
        expectUsageError({"f", "--width", number}, "--width");
        expectUsageError({"f", "--cell", "32x32", "--columns", number}, "--columns");
    }
    for (const char* number : {"-1", "x", "1x", "1.5", "", "18446744073709551616", "99999999999999999999"}) {
        expectUsageError({"f", "--offset", number}, "--offset");
    }
    expectUsageError({"f", "--height", "3"}, "--width");
    expectUsageError({"f", "--cell", "32x32"}, "--columns");
    expectUsageError({"f", "--columns", "3"}, "--cell");
    expectUsageError({"f", "--cell", "7x32", "--columns", "3"}, "8x1 to 4096x4096");
    expectUsageError({"f", "--raw", "--offset", "3"}, "--offset");
    expectUsageError({"f", "--cell", "32x32", "--columns", "3", "--width", "3"}, "--width");
    expectUsageError({"f", "--as", "font", "--width", "3"}, "for rle and pattern");
    expectUsageError({"f", "--as", "numbers", "--interlaced"}, "for rle and pattern");
    expectUsageError({"f", "--as", "rle", "--cell", "32x32", "--columns", "3"}, "for font and numbers");
}

TEST_F(OverlayCommandLineTest, HelpAndVersionGoToStandardOutputWithStatusZero) {
    EXPECT_EQ(0, read({"--help"}).status);
    EXPECT_THAT(out, HasSubstr("overlayview [OPTIONS] FILE"));
    EXPECT_THAT(out, HasSubstr("--interlaced"));
    const CommandLine version = read({"--version"});
    EXPECT_EQ(0, version.status);
    EXPECT_FALSE(version.options);
    EXPECT_THAT(out, testing::MatchesRegex("overlayview [0-9.]+\n"));
    EXPECT_EQ("", err);
}

TEST_F(OverlayCommandLineTest, SizesAreWidthByHeight) {
    EXPECT_EQ((Size{32, 48}), sizeNamed("32x48"));
    EXPECT_EQ((Size{4096, 4096}), sizeNamed("4096x4096"));
    for (const char* text : {"", "x", "32", "32x", "x48", "32x48x1", "32X48", " 32x48", "-1x48", "0x48",
                             "48x0", "4097x1", "1x4097", "4294967328x48"}) {
        EXPECT_FALSE(sizeNamed(text)) << text;
    }
}

}  // namespace
