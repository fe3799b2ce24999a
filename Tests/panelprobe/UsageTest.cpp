#include "Tools/panelprobe/Usage.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

TEST(UsageTest, PrintsTheUsageAndEndsWith255) {
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);  // death tests see standard error only
            USAGE();
        },
        testing::ExitedWithCode(255),
        "^Usage: panelprobe \\{--check\\|--print\\|--waitbutton\\}\n"
        "\t--check\t\t\t\tprompt user to press the buttons one after the other\n"
        "\t--print line1 \\[line2\\]\t\tprint one or two lines on the oled panel and exit\n"
        "\t--waitbutton\t\t\twait until any key was pressed and print which one\n$");
}

}  // namespace
