#include "Tools/boardsim/Board/Json/Codec.h"

#include <gmock/gmock.h>

namespace {

using namespace boardsim;

/// What a codec makes of a JSON text, written again; or its complaint.
template <typename T>
std::string through(const Codec<T>& codec, const std::string& text) {
    try {
        const JsonValue value = parseJson(text);
        return printJson(codec.write(codec.read(JsonPlace(value, "x"))));
    } catch (const JsonError& error) {
        return error.what();
    }
}

struct Row {
    const char* text;
    const char* expected;
};

template <typename T>
void check(const Codec<T>& codec, std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(row.expected, through(codec, row.text)) << row.text;
    }
}

TEST(CodecTest, NumbersKeepToTheirRange) {
    check(number<unsigned>({9, 2}), {{"2", "2"},
                                     {"\"0x9\"", "9"},
                                     {"1", "x: want a number from 2 to 9"},
                                     {"10", "x: want a number from 2 to 9"},
                                     {"-2", "x: want a number from 2 to 9"},
                                     {"3.0", "x: want a number from 2 to 9"},
                                     {"\"\"", "x: want a number from 2 to 9"},
                                     {"\"0x\"", "x: want a number from 2 to 9"},
                                     {"\"3 \"", "x: want a number from 2 to 9"},
                                     {"\"-3\"", "x: want a number from 2 to 9"},
                                     {"true", "x: want a number from 2 to 9"}});
}

TEST(CodecTest, WordsAreWrittenWithAllTheirDigits) {
    check(word<std::uint32_t>(), {{"62", "\"0x0000003e\""},
                                  {"4294967295", "\"0xffffffff\""},
                                  {"4294967296", "x: want a number from 0x0 to 0xffffffff"}});
    check(word<std::uint64_t>(),
          {{"18446744073709551615", "\"0xffffffffffffffff\""},
           {"\"0x10000000000000000\"", "x: want a number from 0x0 to 0xffffffffffffffff"}});
}

TEST(CodecTest, IntegersMayBeNegative) {
    check(integer(-5, 7), {{"-5", "-5"},
                           {"7", "7"},
                           {"7.0", "7"},
                           {"0", "0"},
                           {"0.5", "x: want a whole number from -5 to 7"},
                           {"8", "x: want a whole number from -5 to 7"},
                           {"-6", "x: want a whole number from -5 to 7"},
                           {"1e300", "x: want a whole number from -5 to 7"},
                           {"\"3\"", "x: want a whole number from -5 to 7"}});
}

TEST(CodecTest, SixteenthsAreFractions) {
    check(sixteenths(-16, 40), {{"2.4375", "2.4375"},
                                {"-1", "-1.0"},
                                {"2.5", "2.5"},
                                {"2.5625", "x: want sixteenths from -1.0 to 2.5"},
                                {"0.1", "x: want sixteenths from -1.0 to 2.5"},
                                {"null", "x: want sixteenths from -1.0 to 2.5"}});
}

TEST(CodecTest, TextHasNoControlCharacters) {
    check(text(4), {{"\"a b\"", "\"a b\""},
                    {"\"\"", "x: want a text of 1 to 4 bytes"},
                    {"\"abcde\"", "x: want a text of 1 to 4 bytes"},
                    {"\"a\\u0000b\"", "x: want a text without control characters"},
                    {"\"a\\nb\"", "x: want a text without control characters"},
                    {"\"\\u007f\"", "x: want a text without control characters"},
                    {"7", "x: want a text of 1 to 4 bytes"}});
}

TEST(CodecTest, NamesOfFilesLeadNowhereElse) {
    check(fileName(8), {{"\"fan\"", "\"fan\""},
                        {"\"...\"", "\"...\""},
                        {"\".\"", "x: want what can be the name of a file"},
                        {"\"..\"", "x: want what can be the name of a file"},
                        {"\"a/b\"", "x: want what can be the name of a file"}});
}

TEST(CodecTest, BytesArePairsOfDigits) {
    const char* const complaint = "x: want at most 3 bytes as pairs of hexadecimal digits";
    check(hexText(3), {{"\"00fF7a\"", "\"00ff7a\""},
                       {"\"\"", "\"\""},
                       {"\"0\"", complaint},
                       {"\"0g\"", complaint},
                       {"\"-1\"", complaint},
                       {"\"0x\"", complaint},
                       {"\"00112233\"", complaint},
                       {"12", complaint}});
    check(hexBytes(3), {{"\"80ff\"", "\"80ff\""}, {"[1]", complaint}});
}

TEST(CodecTest, WordsStandForValues) {
    enum class Colour { Red, Green };
    check(choice<Colour>({"red", "green"}), {{"\"green\"", "\"green\""},
                                             {"\"blue\"", "x: want one of red, green"},
                                             {"1", "x: want one of red, green"}});
}

TEST(CodecTest, ListsTellWhichElementIsWrong) {
    check(listOf(number<unsigned>({3}), 2), {{"[1, 2]", "[1, 2]"},
                                             {"[]", "[]"},
                                             {"[1, 2, 3]", "x: want at most 2 elements"},
                                             {"[1, 4]", "x[1]: want a number from 0 to 3"},
                                             {"1", "x: want a list"}});
    check(arrayOf<unsigned, 2>(number<unsigned>({3})), {{"[1, 2]", "[1, 2]"}, {"[1]", "x: want 2 elements"}});
}

}  // namespace
