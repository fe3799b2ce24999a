#include "Tools/boardinfo/TextPrinter.h"

#include <gmock/gmock.h>

#include "Tests/boardinfo/SampleReport.h"

namespace {

using namespace boardinfo;
using testing::HasSubstr;
using testing::Not;

TEST(TextPrinterTest, AlignsNamesEverywhereAndAnswersWithinTheirSection) {
    EXPECT_EQ(
        "board orca\n"
        "\n"
        "identity\n"
        "  card ID         CT: 0x80\n"
        "  card serial     FAILED\n"
        "  switch card ID  not present\n"
        "\n"
        "temperatures\n"
        "  FPGA            47 °C  limit 95 °C\n"
        "  fan             61 °C  limit 60 °C\n"
        "\n"
        "FPGA cores\n"
        "  central_sync    version 0x00030002, addresses 0x00000400 0x00000440\n"
        "  version_only    version 0x00010000, addresses none\n"
        "\n"
        "chips on 1-Wire\n"
        "  not present\n"
        "\n"
        "sync\n"
        "  is master       yes\n"
        "  drift           -0.0625 s\n",
        asText(samples::smallReport(), Colours::Off));
}

TEST(TextPrinterTest, ColoursMarkHeadingsWhatFailedAndWhatIsOverItsLimit) {
    const std::string text = asText(samples::smallReport(), Colours::On);
    EXPECT_THAT(text, HasSubstr("\033[1midentity\033[0m\n"));
    EXPECT_THAT(text, HasSubstr("\033[31mFAILED\033[0m\n"));
    EXPECT_THAT(text, HasSubstr("\033[2mnot present\033[0m\n"));
    EXPECT_THAT(text, HasSubstr("  47 °C  limit"));
    EXPECT_THAT(text, HasSubstr("\033[31m61 °C\033[0m  limit 60 °C"));
}

TEST(TextPrinterTest, ColoursChangeNothingElse) {
    std::string text = asText(samples::smallReport(), Colours::On);
    for (const char* code : {"\033[0m", "\033[1m", "\033[2m", "\033[31m"}) {
        for (auto at = text.find(code); at != std::string::npos; at = text.find(code)) {
            text.erase(at, std::string(code).size());
        }
    }
    EXPECT_EQ(asText(samples::smallReport(), Colours::Off), text);
}

TEST(TextPrinterTest, ExactlyAtItsLimitIsNotOverIt) {
    Section section{"temperatures"};
    section.rows = {answered("fan", std::int64_t{60}).with("limit", std::int64_t{60})};
    EXPECT_THAT(asText({"orca", {section}}, Colours::On), Not(HasSubstr("\033[31m")));
}

TEST(TextPrinterTest, NamesFromOutsideCannotControlTheTerminal) {
    Section section{"FPGA cores", Form::Found};
    section.rows = {Row{"\033]0;evil\007", State::Ok}};
    EXPECT_THAT(asText({"orca", {section}}, Colours::Off), HasSubstr("  ?]0;evil?  \n"));
}

}  // namespace
