#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "Tests/EndToEnd/Panelprobe.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace {

using e2e::onBoard;
using support::board;
using support::BoardRun;

class FontEndToEnd : public testing::Test {
protected:
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(files.file(name), std::ios::binary) << bytes;
        return files.file(name);
    }
    static std::string realFont() {
        std::ifstream file(e2e::kFont, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    support::TemporaryDirectory files;
};

TEST_F(FontEndToEnd, AMissingFontGivesBothMessagesInOrder) {
    const BoardRun run = onBoard({"--print", "one"}, board().option("--no-font"));
    EXPECT_EQ(255, run.status);
    EXPECT_EQ("Cannot find Font.ttf\ninit failed for path: /opt/pattern/oled/\n", run.out);
    EXPECT_EQ("", run.frame);
}

TEST_F(FontEndToEnd, WithoutTheDirectoryTheWorkingDirectorysFontIsTaken) {
    std::filesystem::copy_file(e2e::kFont, files.file("Font.ttf"));
    const BoardRun run =
        onBoard({"--print", "Hello,", "panel"}, board().without("font-directory").in(files.file("")));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("", run.out);
    EXPECT_EQ(onBoard({"--print", "Hello,", "panel"}).frame, run.frame);
}

TEST_F(FontEndToEnd, WithoutDirectoryAndFontTheWorkingDirectoryIsNamed) {
    const BoardRun run = onBoard({"--print", "one"}, board().without("font-directory").in(files.file("")));
    EXPECT_EQ(255, run.status);
    EXPECT_EQ("Cannot find Font.ttf\ninit failed for path: .\n", run.out);
}

TEST_F(FontEndToEnd, AFileThatIsNoFontFailsWithoutTheFirstMessage) {
    std::filesystem::create_directory(files.file("directory"));
    const std::string fonts[] = {write("empty", ""), write("text", "this is no font\n"),
                                 write("truncated", realFont().substr(0, 1000)), files.file("directory")};
    for (const std::string& font : fonts) {
        const BoardRun run = onBoard({"--print", "one"}, board().font(font));
        EXPECT_EQ(255, run.status) << font;
        EXPECT_EQ("init failed for path: /opt/pattern/oled/\n", run.out) << font;
    }
}

TEST_F(FontEndToEnd, AFontCutAnywhereNeverCrashesTheTool) {
    const std::string whole = realFont();
    int loaded = 0;
    for (std::size_t length = 1; length < whole.size(); length += whole.size() / 40) {
        const BoardRun run =
            onBoard({"--print", "Hello,", "panel"}, board().font(write("cut", whole.substr(0, length))));
        EXPECT_TRUE(run.status == 0 || run.status == 255) << length << " bytes: status " << run.status;
        loaded += run.status == 0 ? 1 : 0;
    }
    EXPECT_GT(loaded, 0) << "some cuts leave a font that loads and lacks glyphs";
}

}  // namespace
