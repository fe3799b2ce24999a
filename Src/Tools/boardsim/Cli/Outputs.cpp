#include "Tools/boardsim/Cli/Outputs.h"

#include <initializer_list>
#include <iostream>
#include <stdexcept>

#include "Tools/boardsim/Operator/Picture.h"
#include "Tools/boardsim/Operator/Png.h"
#include "Tools/boardsim/Operator/TerminalView.h"

namespace boardsim {
namespace {

std::optional<OutputFile> openIfAskedFor(const std::string& path) {
    if (path.empty()) {
        return std::nullopt;
    }
    return OutputFile(path);
}

/// A picture is written at the end and takes its file for itself.
void refuseToOverwrite(const std::optional<OutputFile>& picture, const std::string& path,
                       std::initializer_list<const std::optional<OutputFile>*> others) {
    for (const std::optional<OutputFile>* other : others) {
        if (picture && *other && picture->wouldOverwrite(**other)) {
            throw std::invalid_argument("two outputs in one file: " + path);
        }
    }
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
    refuseToOverwrite(frame, options.frameFile, {&screenshot, &log, &trace});
    refuseToOverwrite(screenshot, options.screenshotFile, {&log, &trace});
}

void Outputs::start() {
    for (std::optional<OutputFile>* growing : {&log, &trace}) {
        if (*growing) {
            (*growing)->startEmpty();
        }
    }
}

void Outputs::writePicture(const PanelScreen& screen, const RunOptions& options) {
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
        OutputFile("-").write(terminalShowsColour() ? forTerminal(picture)
                                                    : plainBlocks(picture, plainColumns()));
    }
}

}  // namespace boardsim
