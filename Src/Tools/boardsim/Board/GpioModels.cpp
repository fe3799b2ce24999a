#include "Tools/boardsim/Board/GpioModels.h"

#include <limits>
#include <stdexcept>

#include "Tools/boardsim/Models/GpioDevice.h"

namespace boardsim {
namespace {

[[noreturn]] void refuse(const Fault& fault, const std::string& why) {
    throw std::invalid_argument("--fault " + fault.text + ": " + why);
}

std::string outcome(const GpioAnswer& answer) {
    return answer.error == std::errc{} ? " -> " + std::to_string(answer.value)
                                       : ": " + std::make_error_code(answer.error).message();
}

}  // namespace

GpioModels::GpioModels(std::vector<GpioChip> chips, Tell tell)
    : tell_(std::move(tell)), lines_(std::move(chips)), class_(lines_), tree_(class_, tell_) {}

ActingFile GpioModels::device() {
    FileCalls calls;
    calls.ioctl = [this](const IoctlCall& call) {
        const GpioAnswer answer = answerGpioRequest(lines_, call.request, call.argument);
        tell_(describeGpioRequest(call.request, call.argument) + outcome(answer));
        return IoctlAnswer{answer.value, answer.error};
    };
    return sharedFile("/dev/gpio", std::move(calls));
}

void GpioModels::apply(const Fault& fault) {
    const unsigned line = lineNamed(fault);
    if (fault.action == "stuck") {
        lines_.stick(line, numberOf(fault, 1) != 0);
    } else if (fault.action == "value") {
        lines_.drive(line, numberOf(fault, 1) != 0);
    } else if (fault.action == "taken") {
        lines_.request(line);
    } else {
        refuse(fault, "no action '" + fault.action + "'; there are stuck, value, taken");
    }
}

unsigned GpioModels::lineNamed(const Fault& fault) const {
    const std::size_t plus = fault.device.find('+');
    constexpr std::uint64_t kNoPlace = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t place =
        plus == std::string::npos ? kNoPlace : wholeNumber(fault.device.substr(plus + 1)).value_or(kNoPlace);
    for (const GpioChip& chip : lines_.chips()) {
        if (place < chip.count && chip.label == fault.device.substr(0, plus)) {
            return chip.base + static_cast<unsigned>(place);
        }
    }
    refuse(fault, "no line '" + fault.device + "'; want LABEL+NUMBER");
}

}  // namespace boardsim
