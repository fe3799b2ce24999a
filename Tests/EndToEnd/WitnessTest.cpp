// The frame against one that a Python program draws with FreeType alone.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "Tests/EndToEnd/Panelprobe.h"

namespace {

struct Lines {
    std::string first;
    std::string second;
};

std::string quoted(const std::string& word) {
    std::string result = "'";
    for (const char character : word) {
        result += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return result + "'";
}

std::string drawnByWitness(const Lines& lines) {
    const std::string command = std::string("/usr/bin/python3 ") + WITNESS + " " + e2e::kFont + " " +
                                quoted(lines.first) + " " + quoted(lines.second);
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string frame(20000, '\0');
    frame.resize(std::fread(frame.data(), 1, frame.size(), pipe.get()));
    return frame;
}

std::string repeated(const std::string& text, int times) {
    std::string result;
    while (times-- > 0) {
        result += text;
    }
    return result;
}

class Witness : public testing::TestWithParam<Lines> {};

TEST_P(Witness, DrawsTheSameFrameByteForByte) {
    const Lines lines = GetParam();
    const support::BoardRun run = e2e::onBoard({"--print", lines.first, lines.second});
    ASSERT_EQ(0, run.status);
    ASSERT_EQ(15360U, run.frame.size());
    EXPECT_EQ(drawnByWitness(lines), run.frame);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Witness,
    testing::Values(Lines{"Hello,", "panel"}, Lines{"", ""}, Lines{"", "below only"}, Lines{"above only", ""},
                    Lines{"gjpqy,;", "(descenders)"}, Lines{"MW@#%&", "iIl1|!."},
                    Lines{"0123456789", "ABCDEFGHIJKLM"}, Lines{"NOPQRSTUVWXYZ", "abcdefghijklm"},
                    Lines{"nopqrstuvwxyz", "~!@#$^*()_+"}, Lines{" ", "   spaces   "},
                    Lines{"AV To WA", "fi ffi fl"},
                    Lines{"wider than the panel is, by far", "so it is cut on both sides"},
                    Lines{repeated("W", 400), repeated("i", 400)}, Lines{"two\nlines", "three\nshort\nlines"},
                    Lines{"\n", "\n\n\n"}, Lines{"ends with a break\n", "\nbegins with one"},
                    Lines{repeated("x\n", 60), repeated("\ny", 60)},
                    Lines{"a\x01\x02\x03z", "\x04\x05\x06\x07\x08\x09"}, Lines{"\x0b\x0c\r\x1b", "\x7f"},
                    Lines{"caf\xe9 \xfc\xdf", "\xb5 \xb0 \xa7 \xbf"},
                    Lines{"\x80\x81\x9f\xa0", "\xc3\xa9 is two bytes"},
                    Lines{"\xff\xfe\xfd", "\xd0\xf0\xde\xfe"}, Lines{"--check", "--print"},
                    Lines{"quote ' and \"", "back\\slash `tick`"}, Lines{"< Turn rotary", "right (cw) >"}));

}  // namespace
