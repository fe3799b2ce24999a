#include "Tools/overlayview/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <iostream>
#include <map>
#include <stdexcept>

#include "Tools/overlayview/ExitStatus.h"

namespace overlayview {
namespace {

constexpr std::uint32_t kMostCell = 4096;
constexpr std::uint32_t kLeastCellWidth = 8;  // narrower ones have no bytes
constexpr std::uint32_t kMostSide = 65535;

/// Option values that need a second look.
struct RawOptions {
    std::string kind = "auto";
    std::string cell{};
    std::uint32_t columns = 0;
    std::size_t offset = 0;
    bool raw = false;
    bool interlaced = false;
};

const char* kHelp =
    "Tells what an overlay file holds, and draws it.\n"
    "Exit statuses: 0 good, 1 the file is damaged, 2 wrong usage, 3 a file cannot be read or written.";

const std::map<std::string, Kind>& kinds() {
    static const std::map<std::string, Kind> all{{"auto", Kind::Unknown},
                                                 {"rle", Kind::Runs},
                                                 {"pattern", Kind::Pattern},
                                                 {"font", Kind::Font},
                                                 {"numbers", Kind::Numbers}};
    return all;
}

std::string emptyIsNoFile(const std::string& path) {
    return path.empty() ? "the name of the file is empty" : "";
}

std::string isCell(const std::string& text) {
    const std::optional<Size> size = sizeNamed(text);
    return size && size->width >= kLeastCellWidth ? "" : "a cell is WIDTHxHEIGHT, 8x1 to 4096x4096: " + text;
}

std::string isCount(const std::string& text) {
    std::size_t count = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, count);
    return error == std::errc{} && end == last ? "" : "not a number, or too large: " + text;
}

/// CLI11 puts the positional first otherwise.
class Help : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App*, std::string) const override {
        return "Usage: overlayview [OPTIONS] FILE\n";
    }
};

void declareOptions(CLI::App& app, Options& options, RawOptions& raw) {
    const CLI::Range side(std::uint32_t{1}, kMostSide);
    app.add_option("FILE", options.file, "the overlay file")->required()->check(emptyIsNoFile);
    app.add_option("-o,--output", options.pictureFile, "PNG file for the picture, - for standard output")
        ->check(emptyIsNoFile);
    app.add_flag("--json", options.json, "describe the file as a JSON object");
    app.add_option("--as", raw.kind, "what the file holds: auto, rle, pattern, font, numbers")
        ->check(CLI::IsMember(&kinds()));
    CLI::Option* width =
        app.add_option("--width", options.request.width, "pixels of a row")->check(isCount)->check(side);
    app.add_option("--height", options.request.height, "rows, where a damaged file leaves it open")
        ->check(isCount)
        ->check(side)
        ->needs(width);
    CLI::Option* interlaced =
        app.add_flag("--interlaced", raw.interlaced, "the even rows were stored first; put them in place");
    CLI::Option* cell = app.add_option("--cell", raw.cell, "a font's characters, WIDTHxHEIGHT in pixels")
                            ->check(isCell)
                            ->excludes(width)
                            ->excludes(interlaced);
    CLI::Option* columns = app.add_option("--columns", raw.columns, "a font's characters in a row")
                               ->check(isCount)
                               ->check(side)
                               ->needs(cell);
    cell->needs(columns);
    CLI::Option* offset =
        app.add_option("--offset", raw.offset, "no header, begin at this byte")->check(isCount);
    app.add_flag("--raw", raw.raw, "no header (as --offset 0)")->excludes(offset);
}

/// @throws std::invalid_argument where options contradict each other.
Options checkedOptions(Options options, const RawOptions& raw, bool hasOffset) {
    Request& request = options.request;
    request.kind = kinds().at(raw.kind);
    request.order = raw.interlaced ? RowOrder::Interlaced : RowOrder::Progressive;
    request.wantsPicture = !options.pictureFile.empty();
    if (raw.raw || hasOffset) {
        request.rawOffset = raw.offset;
    }
    if (!raw.cell.empty()) {
        request.sheet = SheetLayout{*sizeNamed(raw.cell), raw.columns};
    }
    const bool characters = request.kind == Kind::Font || request.kind == Kind::Numbers;
    if (characters && (request.width || raw.interlaced)) {
        throw std::invalid_argument("--width and --interlaced are for rle and pattern");
    }
    if (!characters && request.kind != Kind::Unknown && request.sheet) {
        throw std::invalid_argument("--cell and --columns are for font and numbers");
    }
    return options;
}

int complain(const std::string& what) {
    std::cerr << "overlayview: " << what << "\nTry 'overlayview --help'.\n";
    return kUsageError;
}

}  // namespace

std::optional<Size> sizeNamed(const std::string& text) {
    Size size;
    const char* last = text.data() + text.size();
    const auto [cross, widthError] = std::from_chars(text.data(), last, size.width);
    if (widthError != std::errc{} || cross == last || *cross != 'x') {
        return std::nullopt;
    }
    const auto [end, heightError] = std::from_chars(cross + 1, last, size.height);
    if (heightError != std::errc{} || end != last) {
        return std::nullopt;
    }
    const auto inRange = [](std::uint32_t side) { return side >= 1 && side <= kMostCell; };
    return inRange(size.width) && inRange(size.height) ? std::optional(size) : std::nullopt;
}

CommandLine readCommandLine(std::vector<std::string> words) {
    Options options;
    RawOptions raw;
    CLI::App app(kHelp);
    app.name("overlayview");
    app.formatter(std::make_shared<Help>());
    app.set_version_flag("--version", "overlayview " OVERLAYVIEW_VERSION);
    declareOptions(app, options, raw);
    try {
        std::reverse(words.begin(), words.end());  // as CLI11 wants them
        app.parse(std::move(words));
        return {checkedOptions(std::move(options), raw, app.count("--offset") > 0)};
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return {std::nullopt, app.exit(error)};
        }
        return {std::nullopt, complain(error.what())};
    } catch (const std::invalid_argument& error) {
        return {std::nullopt, complain(error.what())};
    }
}

}  // namespace overlayview
