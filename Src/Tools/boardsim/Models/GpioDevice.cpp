#include "Tools/boardsim/Models/GpioDevice.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>

namespace boardsim {
namespace {

constexpr std::uint64_t kLine = 0xFFFF;
constexpr std::uint64_t kLevel = 1U << 16;
constexpr std::uint64_t kOutput = 1U << 24;

struct Arguments {
    unsigned line;
    bool high;
    bool output;
};

GpioAnswer result(std::errc error) {
    return {0, error};
}

GpioAnswer getLevel(GpioBlock& lines, const Arguments& to) {
    const std::optional<bool> level = lines.level(to.line);
    return level ? GpioAnswer{*level ? 1 : 0} : result(std::errc::invalid_argument);
}

struct Request {
    std::uint32_t code;
    const char* name;
    std::uint64_t bits;  ///< that the argument may have
    GpioAnswer (*answer)(GpioBlock&, const Arguments&);
};

constexpr std::array<Request, 5> kRequests{{
    {0x7D03, "set", kLine | kLevel,
     [](GpioBlock& lines, const Arguments& to) { return result(lines.set(to.line, to.high)); }},
    {0x7D04, "direction", kLine | kLevel | kOutput,
     [](GpioBlock& lines, const Arguments& to) {
         return result(to.output ? lines.makeOutput(to.line, to.high) : lines.makeInput(to.line));
     }},
    {0x7D05, "get", kLine, getLevel},
    {0x7D06, "request", kLine,
     [](GpioBlock& lines, const Arguments& to) { return result(lines.request(to.line)); }},
    {0x7D07, "free", kLine,
     [](GpioBlock& lines, const Arguments& to) { return result(lines.free(to.line)); }},
}};

const Request* find(std::uint32_t code) {
    const auto found = std::find_if(kRequests.begin(), kRequests.end(),
                                    [&](const Request& request) { return request.code == code; });
    return found == kRequests.end() ? nullptr : &*found;
}

Arguments unpack(std::uint64_t argument) {
    return {static_cast<unsigned>(argument & kLine), (argument & kLevel) != 0, (argument & kOutput) != 0};
}

}  // namespace

GpioAnswer answerGpioRequest(GpioBlock& lines, std::uint32_t request, std::uint64_t argument) {
    const Request* known = find(request);
    if (known == nullptr) {
        return result(std::errc::inappropriate_io_control_operation);
    }
    if ((argument & ~known->bits) != 0) {
        return result(std::errc::invalid_argument);
    }
    return known->answer(lines, unpack(argument));
}

std::string describeGpioRequest(std::uint32_t request, std::uint64_t argument) {
    const Request* known = find(request);
    if (known == nullptr) {
        std::array<char, 40> text{};
        std::snprintf(text.data(), text.size(), "gpio unknown request 0x%" PRIx32, request);
        return text.data();
    }
    const Arguments to = unpack(argument);
    std::string text = std::string("gpio ") + known->name + " " + std::to_string(to.line);
    if ((known->bits & kOutput) != 0) {
        text += to.output ? " output" : " input";
    }
    // An input has no level to set.
    if ((known->bits & kLevel) != 0 && ((known->bits & kOutput) == 0 || to.output)) {
        text += to.high ? " high" : " low";
    }
    return text;
}

}  // namespace boardsim
