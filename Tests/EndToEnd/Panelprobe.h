#pragma once

#include <string>

#include "Tests/Support/VirtualBoard.h"

namespace e2e {

/// The unmodified tool that is driven.
inline const std::string kPanelprobe = PANELPROBE;

/// A golden picture of this folder.
inline std::string golden(const std::string& name) {
    return std::string(GOLDEN_DIRECTORY) + "/" + name + ".png";
}

/// Debian's font that the virtual board installs unless told otherwise.
inline const std::string kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

inline const std::string kUsage =
    "Usage: panelprobe {--check|--print|--waitbutton}\n"
    "\t--check\t\t\t\tprompt user to press the buttons one after the other\n"
    "\t--print line1 [line2]\t\tprint one or two lines on the oled panel and exit\n"
    "\t--waitbutton\t\t\twait until any key was pressed and print which one\n";

inline support::BoardRun onBoard(const std::vector<std::string>& arguments,
                                 support::VirtualBoard board = support::board()) {
    std::vector<std::string> command = {kPanelprobe};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return board.run(command);
}

}  // namespace e2e
