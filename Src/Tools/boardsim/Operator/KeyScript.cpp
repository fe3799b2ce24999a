#include "Tools/boardsim/Operator/KeyScript.h"

#include <charconv>
#include <optional>
#include <stdexcept>

namespace boardsim {
namespace {

constexpr std::string_view kSeparators = " \t\r\n,";
constexpr std::string_view kPausePrefix = "wait:";
constexpr unsigned kLargestCount = 255;
constexpr unsigned kLongestPauseMs = 3'600'000;

std::optional<unsigned> wholeNumber(std::string_view digits, unsigned largest) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc{} || end != digits.data() + digits.size() || value > largest) {
        return std::nullopt;
    }
    return value;
}

[[noreturn]] void reject(std::string_view word) {
    throw std::invalid_argument("bad key '" + std::string(word) +
                                "': expected left, right, red, cw or ccw, with a count as in 2xleft, "
                                "joined with + for one moment, or wait:MILLISECONDS");
}

std::optional<KeyStroke> parseStroke(std::string_view word) {
    unsigned times = 1;
    if (const std::size_t cross = word.find('x'); cross != std::string_view::npos) {
        const std::optional<unsigned> count = wholeNumber(word.substr(0, cross), kLargestCount);
        if (!count || *count == 0) {
            return std::nullopt;
        }
        times = *count;
        word.remove_prefix(cross + 1);
    }
    const std::optional<PanelKey> key = keyNamed(word);
    if (!key) {
        return std::nullopt;
    }
    return KeyStroke{*key, times};
}

KeyStep parsePause(std::string_view word) {
    const auto milliseconds = wholeNumber(word.substr(kPausePrefix.size()), kLongestPauseMs);
    if (!milliseconds) {
        reject(word);
    }
    return {std::string(word), {}, std::chrono::milliseconds(*milliseconds)};
}

KeyStep parseStep(std::string_view word) {
    if (word.starts_with(kPausePrefix)) {
        return parsePause(word);
    }
    KeyStep step{std::string(word)};
    for (std::size_t start = 0; start <= word.size();) {
        const std::size_t end = std::min(word.find('+', start), word.size());
        const std::optional<KeyStroke> stroke = parseStroke(word.substr(start, end - start));
        if (!stroke) {
            reject(word);
        }
        step.strokes.push_back(*stroke);
        start = end + 1;
    }
    return step;
}

}  // namespace

std::vector<KeyStep> parseKeyScript(std::string_view script) {
    std::vector<KeyStep> steps;
    for (;;) {
        const std::size_t start = script.find_first_not_of(kSeparators);
        if (start == std::string_view::npos) {
            return steps;
        }
        script.remove_prefix(start);
        const std::size_t end = std::min(script.find_first_of(kSeparators), script.size());
        steps.push_back(parseStep(script.substr(0, end)));
        script.remove_prefix(end);
    }
}

}  // namespace boardsim
