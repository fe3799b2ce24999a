#include "Tools/panelprobe/Usage.h"

#include <cstdio>
#include <cstdlib>

void USAGE() {
    std::puts(
        "Usage: panelprobe {--check|--print|--waitbutton}\n"
        "\t--check\t\t\t\tprompt user to press the buttons one after the other\n"
        "\t--print line1 [line2]\t\tprint one or two lines on the oled panel and exit\n"
        "\t--waitbutton\t\t\twait until any key was pressed and print which one");
    std::exit(-1);
}
