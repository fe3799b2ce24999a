#include "Tools/boardsim/Cli/Outputs.h"

#include <iostream>

#include "Tools/boardsim/Operator/Picture.h"
#include "Tools/boardsim/Operator/Png.h"
#include "Tools/boardsim/Operator/TerminalView.h"

namespace boardsim {
namespace {

std::unique_ptr<OutputFile> openIfAskedFor(const std::string& path) {
    return path.empty() ? nullptr : std::make_unique<OutputFile>(path);
}

void sayNothingWasShown(const RunOptions& options) {
    for (const std::string& file : {options.frameFile, options.screenshotFile}) {
        if (!file.empty()) {
            std::cerr << "boardsim: the program sent no whole frame: " << file << " is not written\n";
        }
    }
    if (options.show) {
        std::cerr << "boardsim: the program sent no whole frame: nothing to show\n";
    }
}

}  // namespace

Outputs::Outputs(const RunOptions& options)
    : frame(openIfAskedFor(options.frameFile)),
      screenshot(openIfAskedFor(options.screenshotFile)),
      log(openIfAskedFor(options.logFile)),
      trace(openIfAskedFor(options.traceFile)) {
    for (OutputFile* growing : {log.get(), trace.get()}) {
        if (growing != nullptr) {
            growing->startEmpty();
        }
    }
}

void Outputs::writePicture(const PanelScreen& screen, const RunOptions& options) const {
    if (screen.frame().empty()) {
        sayNothingWasShown(options);
        return;
    }
    if (frame) {
        frame->write(screen.frame());
    }
    if (!screenshot && !options.show) {
        return;
    }
    const Picture picture = seenByOperator(screen.frame(), screen.geometry());
    if (screenshot) {
        screenshot->write(encodePng(enlarge(picture, options.scale)));
    }
    if (options.show) {
        OutputFile("-").write(terminalShowsColour() ? forTerminal(picture) : plainBlocks(picture));
    }
}

}  // namespace boardsim
