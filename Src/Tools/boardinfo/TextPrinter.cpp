#include "Tools/boardinfo/TextPrinter.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "Tools/boardinfo/ValueText.h"

namespace boardinfo {
namespace {

constexpr std::string_view kBold = "\033[1m";
constexpr std::string_view kDim = "\033[2m";
constexpr std::string_view kRed = "\033[31m";
constexpr std::string_view kPlain = "\033[0m";

constexpr const char* kNotPresent = "not present";
constexpr const char* kIndent = "  ";
constexpr std::size_t kGap = 2;

/// A detail of this name is what the value should stay below.
constexpr const char* kLimit = "limit";

class Painter {
public:
    explicit Painter(Colours colours) : colours_(colours) {}

    std::string paint(std::string_view colour, std::string_view text) const {
        std::string painted(text);
        if (colours_ == Colours::On && !colour.empty()) {
            painted.insert(0, colour).append(kPlain);
        }
        return painted;
    }

private:
    Colours colours_;
};

double numberOf(const Value& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    const auto* real = std::get_if<double>(&value);
    return real != nullptr ? *real : 0;
}

bool isOverLimit(const Row& row) {
    const auto limit = std::ranges::find(row.details, kLimit, &Detail::name);
    return row.value && limit != row.details.end() && numberOf(*row.value) > numberOf(limit->value);
}

std::string_view colourOf(const Row& row) {
    switch (row.state) {
        case State::NotPresent:
            return kDim;
        case State::Failed:
            return kRed;
        case State::Ok:
            break;
    }
    return isOverLimit(row) ? kRed : std::string_view();
}

std::string answerOf(const Row& row) {
    switch (row.state) {
        case State::NotPresent:
            return kNotPresent;
        case State::Failed:
            return "FAILED";
        case State::Ok:
            break;
    }
    return row.value ? valueText(*row.value, row.unit) : "";
}

std::string detailsOf(const Row& row) {
    std::string text;
    for (const Detail& detail : row.details) {
        text += (text.empty() ? "" : ", ") + detail.name + " " + valueText(detail.value, detail.unit);
    }
    return text;
}

struct Widths {
    std::size_t names = 0;
    std::size_t answers = 0;
};

Widths widthsOf(const Report& report) {
    Widths widths;
    for (const Section& section : report.sections) {
        for (const Row& row : section.rows) {
            widths.names = std::max(widths.names, columns(printable(row.name)));
        }
    }
    return widths;
}

/// Answers are aligned within their section only: one long text must not push every detail away.
std::size_t answerWidth(const Section& section) {
    std::size_t width = 0;
    for (const Row& row : section.rows) {
        width = std::max(width, row.details.empty() ? 0 : columns(answerOf(row)));
    }
    return width;
}

std::string padding(std::size_t width, std::string_view text) {
    const std::size_t used = columns(text);
    return std::string((used < width ? width - used : 0) + kGap, ' ');
}

std::string lineOf(const Row& row, Widths widths, const Painter& painter) {
    const std::string name = printable(row.name);
    const std::string answer = answerOf(row);
    const std::string details = detailsOf(row);
    std::string line = kIndent + name + padding(widths.names, name) + painter.paint(colourOf(row), answer);
    if (!details.empty()) {
        line += (widths.answers == 0 ? "" : padding(widths.answers, answer)) + details;
    }
    return line + "\n";
}

}  // namespace

std::string asText(const Report& report, Colours colours) {
    const Painter painter(colours);
    Widths widths = widthsOf(report);
    std::string text = painter.paint(kBold, "board " + report.board) + "\n";
    for (const Section& section : report.sections) {
        text += "\n" + painter.paint(kBold, section.name) + "\n";
        widths.answers = answerWidth(section);
        for (const Row& row : section.rows) {
            text += lineOf(row, widths, painter);
        }
        if (section.rows.empty()) {
            text += kIndent + painter.paint(kDim, kNotPresent) + "\n";
        }
    }
    return text;
}

}  // namespace boardinfo
