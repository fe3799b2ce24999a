#include "Tools/boardsim/Board/Fault.h"

#include <charconv>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

namespace boardsim {
namespace {

[[noreturn]] void refuse(const std::string& fault, const std::string& why) {
    throw std::invalid_argument("--fault " + fault + ": " + why);
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos;
         end = text.find(separator, start)) {
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

/// "name=value", or a name alone.
std::pair<std::string, std::string> nameAndValue(const std::string& word) {
    const std::size_t sign = word.find('=');
    if (sign == std::string::npos) {
        return {word, {}};
    }
    return {word.substr(0, sign), word.substr(sign + 1)};
}

FaultSchedule scheduleOf(const std::string& fault, const std::vector<std::string>& words) {
    std::optional<std::uint64_t> after;
    std::optional<std::uint64_t> times;
    for (const std::string& word : words) {
        const auto [name, value] = nameAndValue(word);
        std::optional<std::uint64_t>* const wanted = name == "after"   ? &after
                                                     : name == "times" ? &times
                                                                       : nullptr;
        if (wanted == nullptr || *wanted) {
            refuse(fault, "'" + word + "' is neither after=N nor times=N, or comes twice");
        }
        *wanted = wholeNumber(value);
        if (!*wanted) {
            refuse(fault, "'" + word + "' wants a number");
        }
    }
    return FaultSchedule(after.value_or(0), times);
}

}  // namespace

Fault parseFault(const std::string& text) {
    std::vector<std::string> words = split(text, ':');
    constexpr std::size_t kNeeded = 3;
    if (words.size() < kNeeded || words[0].empty() || words[1].empty() ||
        nameAndValue(words[2]).first.empty()) {
        refuse(text, "want KIND:DEVICE:ACTION[=VALUE][:after=N][:times=N]");
    }
    Fault fault;
    fault.kind = words[0];
    fault.device = words[1];
    std::tie(fault.action, fault.value) = nameAndValue(words[2]);
    fault.schedule = scheduleOf(text, {words.begin() + kNeeded, words.end()});
    fault.text = text;
    return fault;
}

std::uint64_t numberOf(const Fault& fault, std::uint64_t largest) {
    const std::optional<std::uint64_t> number = wholeNumber(fault.value);
    if (!number || *number > largest) {
        refuse(fault.text, fault.action + " wants a number from 0 to " + std::to_string(largest));
    }
    return *number;
}

std::optional<std::uint64_t> wholeNumber(std::string_view digits) {
    const bool isHexadecimal = digits.starts_with("0x") || digits.starts_with("0X");
    if (isHexadecimal) {
        digits.remove_prefix(2);
    }
    std::uint64_t number = 0;
    const char* const last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, number, isHexadecimal ? 16 : 10);
    if (error != std::errc{} || end != last) {
        return std::nullopt;
    }
    return number;
}

}  // namespace boardsim
