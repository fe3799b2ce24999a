#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>
#include <memory>
#include <string_view>

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Collect.h"
#include "Tools/boardinfo/CommandLine.h"
#include "Tools/boardinfo/ExitStatus.h"
#include "Tools/boardinfo/JsonPrinter.h"
#include "Tools/boardinfo/Output.h"
#include "Tools/boardinfo/Screen.h"
#include "Tools/boardinfo/TextPrinter.h"
#include "Tools/boardinfo/Watch.h"
#include "Vl/Common/Log/LogImpl.h"

namespace {

using namespace boardinfo;

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

Colours coloursFor(const Output& output) {
    const char* terminal = std::getenv("TERM");
    const bool isDumb = terminal != nullptr && std::string_view(terminal) == "dumb";
    return output.isTerminal() && !isDumb && !isSet("NO_COLOR") ? Colours::On : Colours::Off;
}

/// One report as the options want it.
std::string printed(const Report& report, const Options& options, const Output& output) {
    if (options.json) {
        return asJson(report, options.watch ? JsonLayout::OneLine : JsonLayout::Indented);
    }
    return asText(report, coloursFor(output));
}

/// The same among others: an empty line between them, or each in the other's place.
std::string printedInTurn(const Report& report, const Options& options, const Output& output, bool isFirst) {
    std::string text = printed(report, options, output);
    if (options.json) {
        return text;
    }
    if (output.isTerminal()) {
        return (isFirst ? "\033[2J" : "") + redrawn(text, output.terminalLines());
    }
    return (isFirst ? "" : "\n") + text;
}

/// @return the exit status when there is nothing more to be written.
std::optional<int> write(const Output& output, const std::string& text, int status) {
    if (output.write(text)) {
        return std::nullopt;
    }
    if (errno == EPIPE) {
        return status;  // who read has seen enough
    }
    std::cerr << "boardinfo: the report cannot be written: " << std::strerror(errno) << "\n";
    return kSomethingFailed;
}

int statusOf(const Report& report) {
    return report.hasFailures() ? kSomethingFailed : kAllAnswered;
}

int show(Board& board, const Options& options, const Output& output) {
    const Report report = collect(board);
    const int status = statusOf(report);
    return write(output, printed(report, options, output), status).value_or(status);
}

int keepShowing(Board& board, const Options& options, const Output& output, Watch& watch) {
    int status = kAllAnswered;
    bool isFirst = true;
    do {
        const Report report = collect(board);
        status = statusOf(report);
        if (const auto end = write(output, printedInTurn(report, options, output, isFirst), status)) {
            return *end;
        }
        isFirst = false;
    } while (watch.waitForNext());
    return status;
}

int run(const Options& options, const Output& output) {
    std::optional<Watch> watch;
    if (options.watch) {
        watch.emplace(*options.watch);
    }
    Valen::Log::vlLog = std::make_unique<Valen::Log::LogImpl>();
    Valen::Log::vlLog->LogInit();
    Board board(options.board);
    return watch ? keepShowing(board, options, output, *watch) : show(board, options, output);
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine commandLine = readCommandLine({argv + std::min(argc, 1), argv + argc});
    if (!commandLine.options) {
        return commandLine.status;
    }
    try {
        const Output output;
        return run(*commandLine.options, output);
    } catch (const std::exception& error) {
        std::cerr << "boardinfo: " << error.what() << "\n";
        return kSomethingFailed;
    }
}
