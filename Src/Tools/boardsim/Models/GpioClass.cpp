#include "Tools/boardsim/Models/GpioClass.h"

#include <algorithm>

namespace boardsim {
namespace {

std::string line(unsigned long number) {
    return std::to_string(number) + "\n";
}

std::vector<TextAttribute> filesOf(const GpioChip& chip) {
    return {{"base", [base = chip.base] { return line(base); }},
            {"label", [label = chip.label] { return label + "\n"; }},
            {"ngpio", [count = chip.count] { return line(count); }}};
}

std::string_view withoutLineEnd(std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    return text;
}

/// A line's number, if it can be one.
std::optional<unsigned> lineNumber(std::string_view text) {
    long number = 0;
    if (!readNumber(text, number) || number < 0) {
        return std::nullopt;
    }
    return static_cast<unsigned>(number);
}

}  // namespace

std::vector<TextAttribute> GpioClass::files() {
    return {{"export", {}, [this](std::string_view text) { return exportLine(text); }},
            {"unexport", {}, [this](std::string_view text) { return unexportLine(text); }}};
}

std::vector<GpioClass::Directory> GpioClass::directories() {
    std::vector<Directory> all;
    for (const GpioChip& chip : lines_.chips()) {
        all.push_back({"gpiochip" + std::to_string(chip.base), boardsim::filesOf(chip)});
    }
    for (const Exported& exported : exported_) {
        all.push_back({"gpio" + std::to_string(exported.line), filesOf(exported.line)});
    }
    return all;
}

std::vector<TextAttribute> GpioClass::filesOf(unsigned number) {
    return {{"active_low", [this, number] { return line(isActiveLow(number) ? 1 : 0); },
             whileExported(number, &GpioClass::storeActiveLow)},
            {"direction", [this, number] { return lines_.isOutput(number) == true ? "out\n" : "in\n"; },
             whileExported(number, &GpioClass::storeDirection)},
            {"value", [this, number] { return showValue(number); },
             whileExported(number, &GpioClass::storeValue)}};
}

std::function<std::errc(std::string_view)> GpioClass::whileExported(unsigned number, Store store) {
    return [this, number, store](std::string_view text) {
        return findExported(number) == exported_.end() ? std::errc::no_such_device
                                                       : (this->*store)(number, text);
    };
}

std::vector<GpioClass::Exported>::iterator GpioClass::findExported(unsigned number) {
    return std::find_if(exported_.begin(), exported_.end(),
                        [&](const Exported& exported) { return exported.line == number; });
}

bool GpioClass::isActiveLow(unsigned number) {
    const auto found = findExported(number);
    return found != exported_.end() && found->activeLow;
}

std::errc GpioClass::exportLine(std::string_view text) {
    const std::optional<unsigned> number = lineNumber(text);
    if (!number) {
        return std::errc::invalid_argument;
    }
    const std::errc taken = lines_.request(*number);
    if (taken == std::errc{}) {
        exported_.push_back({*number});
    }
    return taken;
}

std::errc GpioClass::unexportLine(std::string_view text) {
    const std::optional<unsigned> number = lineNumber(text);
    const auto found = number ? findExported(*number) : exported_.end();
    if (found == exported_.end()) {
        return std::errc::invalid_argument;
    }
    exported_.erase(found);
    return lines_.free(*number);
}

std::errc GpioClass::storeDirection(unsigned number, std::string_view text) {
    const std::string_view word = withoutLineEnd(text);
    if (word == "in") {
        return lines_.makeInput(number);
    }
    // These are levels of the wire, whatever "active_low" says.
    if (word == "out" || word == "low" || word == "high") {
        return lines_.makeOutput(number, word == "high");
    }
    return std::errc::invalid_argument;
}

std::errc GpioClass::storeValue(unsigned number, std::string_view text) {
    long value = 0;
    if (!readNumber(text, value)) {
        return std::errc::invalid_argument;
    }
    return lines_.set(number, (value != 0) != isActiveLow(number));
}

std::errc GpioClass::storeActiveLow(unsigned number, std::string_view text) {
    long value = 0;
    if (!readNumber(text, value)) {
        return std::errc::invalid_argument;
    }
    findExported(number)->activeLow = value != 0;
    return {};
}

std::string GpioClass::showValue(unsigned number) {
    return line((lines_.level(number) == true) != isActiveLow(number) ? 1 : 0);
}

}  // namespace boardsim
