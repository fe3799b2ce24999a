#include "Tools/boardinfo/Screen.h"

#include <algorithm>
#include <vector>

namespace boardinfo {
namespace {

constexpr const char* kHome = "\033[H";
constexpr const char* kClearRestOfLine = "\033[K";
constexpr const char* kClearBelow = "\033[J";

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

}  // namespace

std::string redrawn(std::string_view text, std::size_t lines) {
    std::vector<std::string_view> shown = linesOf(text);
    std::string more;
    if (lines > 1 && shown.size() >= lines) {  // the cursor needs a line, too
        const std::size_t fit = lines - 2;
        more = "(" + std::to_string(shown.size() - fit) + " more lines)";
        shown.resize(fit);
        shown.push_back(more);
    }
    std::string screen = kHome;
    for (const std::string_view line : shown) {
        screen.append(line).append(kClearRestOfLine).append("\n");
    }
    return screen + kClearBelow;
}

}  // namespace boardinfo
