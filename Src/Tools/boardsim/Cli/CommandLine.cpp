#include "Tools/boardsim/Cli/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Host/ExitStatus.h"

namespace boardsim {
namespace {

constexpr double kLongestTimeoutSeconds = 1e6;
constexpr std::size_t kLargestScale = 64;

/// Option values that need a second look.
struct RawOptions {
    std::string keys;
    std::optional<std::string> screen;
    std::string font;
    std::vector<std::string> without;
    std::vector<std::string> faults;
    bool noFont = false;
    double timeoutSeconds = 0;
};

const char* kRunHelp =
    "Runs an unmodified program on a simulated board and ends with its exit status.\n"
    "boardsim's own exit statuses: 2 wrong usage, 124 timed out, 125 the board cannot be made,\n"
    "126 the program cannot be run, 127 there is no such program, 128+N ended by signal N.";

/// CLI11 does not know about what comes after "--".
class RunHelp : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App*, std::string) const override {
        return "Usage: boardsim run [OPTIONS] -- PROGRAM [ARG...]\n";
    }
};

/// "nan" reads as a number and lies in every range.
std::string isNumber(const std::string& seconds) {
    return std::isnan(std::strtod(seconds.c_str(), nullptr)) ? "not a number" : "";
}

std::string emptyIsNoFile(const std::string& path) {
    return path.empty() ? "the name of the file is empty" : "";
}

void declareOptions(CLI::App& run, RunOptions& options, RawOptions& raw) {
    run.formatter(std::make_shared<RunHelp>());
    run.add_option("--keys", raw.keys,
                   "an operator's script: left, right, red, cw, ccw, 2xright, left+cw, wait:MS");
    run.add_option("--frame", options.frameFile, "file for the last whole frame, byte for byte")
        ->check(emptyIsNoFile);
    run.add_option("--screenshot", options.screenshotFile, "PNG file for the panel as an operator sees it")
        ->check(emptyIsNoFile);
    run.add_option("--scale", options.scale, "pixels of the PNG for one of the panel")
        ->check(CLI::Range(std::size_t{1}, kLargestScale));
    run.add_flag("--show", options.show, "show the panel in the terminal at the end");
    run.add_option("--log", options.logFile, "file for the program's syslog lines, - for standard output")
        ->check(emptyIsNoFile);
    run.add_option("--trace", options.traceFile,
                   "file for every frame, state, seek and register access, - for standard output")
        ->check(emptyIsNoFile);
    run.add_option("--timeout", raw.timeoutSeconds, "end the program after so many seconds")
        ->check(isNumber)
        ->check(CLI::Range(0.001, kLongestTimeoutSeconds));
    run.add_option("--board", options.board, "the board: a built-in one's name (orca, hd24), or a file")
        ->check(emptyIsNoFile);
    CLI::Option* font = run.add_option("--font", raw.font, "font file of the board")->check(emptyIsNoFile);
    run.add_flag("--no-font", raw.noFont, "no font in the board's font directory (as --without font)")
        ->excludes(font);
    run.add_option("--without", raw.without, "leave out a part, repeatable: " + allPartNames())
        ->allow_extra_args(false);
    run.add_option("--screen", raw.screen, "a screen that misbehaves: one-byte, failing, full[:BYTES]");
    run.add_option("--fault", raw.faults,
                   "a device that misbehaves, repeatable: KIND:DEVICE:ACTION[=VALUE][:after=N][:times=N]")
        ->allow_extra_args(false);
}

void takeParts(RunOptions& options, const RawOptions& raw) {
    for (const std::string& name : raw.without) {
        const std::optional<BoardPart> part = partNamed(name);
        if (!part) {
            throw std::invalid_argument("--without: no part '" + name + "'; there are " + allPartNames());
        }
        options.missing.add(*part);
    }
    if (raw.noFont) {
        options.missing.add(BoardPart::Font);
    }
}

void takeFont(RunOptions& options, const RawOptions& raw) {
    if (!raw.font.empty()) {
        options.font = std::filesystem::absolute(raw.font);
    }
    const bool needed =
        !options.missing.has(BoardPart::Font) && !options.missing.has(BoardPart::FontDirectory);
    std::error_code unreadable;
    if (needed && !std::filesystem::exists(options.font, unreadable)) {
        throw std::invalid_argument("no font " + options.font +
                                    "; name another with --font, or use --no-font");
    }
}

RunOptions checkedOptions(RunOptions options, const RawOptions& raw) {
    if (options.program.empty()) {
        throw std::invalid_argument("no program: boardsim run [OPTIONS] -- PROGRAM [ARG...]");
    }
    options.keys = parseKeyScript(raw.keys);
    if (raw.screen) {
        const std::optional<ScreenFault> fault = screenFaultNamed(*raw.screen);
        if (!fault) {
            throw std::invalid_argument("--screen: no '" + *raw.screen +
                                        "'; there are one-byte, failing, full[:BYTES]");
        }
        options.screen = *fault;
    }
    if (raw.timeoutSeconds > 0) {
        options.timeout =
            std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(raw.timeoutSeconds));
    }
    for (const std::string& fault : raw.faults) {
        options.faults.push_back(parseFault(fault));
    }
    takeParts(options, raw);
    takeFont(options, raw);
    return options;
}

std::string checkedBoard(std::string name, const RunOptions& options) {
    if (!options.program.empty()) {
        throw std::invalid_argument("boards runs no program");
    }
    if (!name.empty() && builtInBoard(name) == nullptr) {
        throw std::invalid_argument("boards: no board '" + name + "'; there are orca, hd24");
    }
    return name;
}

int complain(const std::string& what) {
    std::cerr << "boardsim: " << what << "\nTry 'boardsim run --help'.\n";
    return kUsageError;
}

}  // namespace

std::optional<ScreenFault> screenFaultNamed(const std::string& name) {
    const std::string full = "full:";
    if (name == "one-byte") {
        return ScreenFault{ScreenHabit::TakesOneByte};
    }
    if (name == "failing") {
        return ScreenFault{ScreenHabit::Fails};
    }
    if (name == "full") {
        return ScreenFault{ScreenHabit::RunsFull};
    }
    if (!name.starts_with(full)) {
        return std::nullopt;
    }
    std::size_t capacity = 0;
    const char* last = name.data() + name.size();
    const auto [end, error] = std::from_chars(name.data() + full.size(), last, capacity);
    if (error != std::errc{} || end != last) {
        return std::nullopt;
    }
    return ScreenFault{ScreenHabit::RunsFull, capacity};
}

CommandLine readCommandLine(std::vector<std::string> words) {
    RunOptions options;
    RawOptions raw;
    // What follows the first "--" is the program's and none of ours, further "--" included.
    const auto mark = std::find(words.begin(), words.end(), "--");
    if (mark != words.end()) {
        options.program.assign(mark + 1, words.end());
        words.erase(mark, words.end());
    }

    CLI::App app("The virtual board");
    app.name("boardsim");
    app.set_version_flag("--version", "boardsim " BOARDSIM_VERSION);
    app.require_subcommand(1);
    declareOptions(*app.add_subcommand("run", kRunHelp), options, raw);
    std::string board;
    CLI::App& boards = *app.add_subcommand("boards", "Prints the built-in boards as JSON.");
    boards.add_option("NAME", board, "only this one");
    try {
        std::reverse(words.begin(), words.end());  // as CLI11 wants them
        app.parse(std::move(words));
        if (boards.parsed()) {
            return {std::nullopt, checkedBoard(board, options)};
        }
        return {checkedOptions(std::move(options), raw)};
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return {std::nullopt, std::nullopt, app.exit(error)};
        }
        return {std::nullopt, std::nullopt, complain(error.what())};
    } catch (const std::invalid_argument& error) {
        return {std::nullopt, std::nullopt, complain(error.what())};
    }
}

}  // namespace boardsim
