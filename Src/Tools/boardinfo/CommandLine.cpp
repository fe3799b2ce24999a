#include "Tools/boardinfo/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>
#include <map>

#include "Tools/boardinfo/ExitStatus.h"

namespace boardinfo {
namespace {

constexpr double kShortestWatch = 0.1;
constexpr double kLongestWatch = 86400;

const char* kHelp =
    "Shows what a board is made of and how it does. Reads only.\n"
    "Exit statuses: 0 everything answered, 1 something failed, 2 wrong usage.";

const std::map<std::string, BoardKind>& boards() {
    static const std::map<std::string, BoardKind> all{{"orca", BoardKind::Orca}, {"hd24", BoardKind::Hd24}};
    return all;
}

std::string isWatch(const std::string& text) {
    return secondsNamed(text) ? "" : "seconds are 0.1 to 86400: " + text;
}

/// CLI11 writes the options' types in its own way otherwise.
class Help : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App*, std::string) const override {
        return "Usage: boardinfo [OPTIONS]\n";
    }
};

void declareOptions(CLI::App& app, Options& options, std::string& board, std::string& watch) {
    app.add_option("--board", board, "the kind of board: orca, hd24")
        ->check(CLI::IsMember(&boards()))
        ->capture_default_str();
    app.add_flag("--json", options.json, "report as a JSON object");
    app.add_option("--watch", watch, "report anew every so many SECONDS, until told to end")->check(isWatch);
}

int complain(const std::string& what) {
    std::cerr << "boardinfo: " << what << "\nTry 'boardinfo --help'.\n";
    return kUsageError;
}

}  // namespace

std::optional<std::chrono::milliseconds> secondsNamed(const std::string& text) {
    double seconds = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, seconds, std::chars_format::fixed);
    if (error != std::errc{} || end != last || !(seconds >= kShortestWatch && seconds <= kLongestWatch)) {
        return std::nullopt;
    }
    return std::chrono::milliseconds(std::lround(seconds * 1000));
}

CommandLine readCommandLine(std::vector<std::string> words) {
    Options options;
    std::string board = "orca";
    std::string watch;
    CLI::App app(kHelp);
    app.name("boardinfo");
    app.formatter(std::make_shared<Help>());
    app.set_version_flag("--version", "boardinfo " BOARDINFO_VERSION);
    declareOptions(app, options, board, watch);
    try {
        std::reverse(words.begin(), words.end());  // as CLI11 wants them
        app.parse(std::move(words));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return {std::nullopt, app.exit(error)};
        }
        return {std::nullopt, complain(error.what())};
    }
    options.board = boards().at(board);
    if (!watch.empty()) {
        options.watch = secondsNamed(watch);
    }
    return {options};
}

}  // namespace boardinfo
