#include <cstdio>
#include <memory>
#include <string>

#include "Tools/panelprobe/Check.h"
#include "Tools/panelprobe/Colours.h"
#include "Tools/panelprobe/UI.h"
#include "Tools/panelprobe/Usage.h"
#include "Tools/panelprobe/WaitButton.h"
#include "Vl/Common/Files/StandardDescriptors.h"
#include "Vl/Common/Log/LogImpl.h"

int main(int argc, char** argv) {
    Valen::fillStandardDescriptors();
    // A script that reads the answers through a pipe sees each line when it is printed.
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    Valen::Log::vlLog = std::make_unique<Valen::Log::LogImpl>();
    Valen::Log::vlLog->LogInit();

    UI ui;
    if (argc < 2) {
        USAGE();
    }
    const std::string option = argv[1];
    if (option == "--check") {
        checkAllControls(ui);
    } else if (option == "--print" && argc > 2) {
        ui.print(argv[2], argc > 3 ? argv[3] : "", kBlack);
    } else if (option == "--waitbutton") {
        waitForAnyKey(ui);
    } else {
        USAGE();
    }
    return 0;
}
