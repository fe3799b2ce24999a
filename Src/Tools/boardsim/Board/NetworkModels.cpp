#include "Tools/boardsim/Board/NetworkModels.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace boardsim {
namespace {

// Requests that are private to a device, as the two drivers number them.
constexpr unsigned kPatternOn = 0x89F0;
constexpr unsigned kPatternOff = 0x89F1;
constexpr unsigned kShutDown = 0x89F3;
constexpr unsigned kFibreLength = 0x89F6;

constexpr std::uint64_t kLargestErrno = 4095;
constexpr std::uint64_t kLongestWaitMs = 1'000'000'000;

/// What these drivers take from the request: the first integer behind the name.
std::uint32_t argumentOf(const SocketRequest& request) {
    std::uint32_t argument = 0;
    std::memcpy(&argument, request.data.data(), std::min(sizeof argument, request.data.size()));
    return argument;
}

std::string said(const IoctlAnswer& answer) {
    return answer.error == std::errc{} ? "" : ": " + std::make_error_code(answer.error).message();
}

[[noreturn]] void refuse(const Fault& fault, const std::string& why) {
    throw std::invalid_argument("--fault " + fault.text + ": " + why);
}

}  // namespace

NetworkModels::NetworkModels(std::vector<NetworkInterface> interfaces,
                             const std::optional<InbandPart>& inband,
                             const std::optional<PatternPart>& pattern, Tell tell)
    : interfaces_(std::move(interfaces)), tell_(std::move(tell)) {
    if (inband) {
        inband_.emplace(inband->fibreLengths);
    }
    if (pattern) {
        pattern_.emplace(pattern->lanes);
    }
}

NetworkInterface* NetworkModels::find(const std::string& interface) {
    const auto found = std::find_if(interfaces_.begin(), interfaces_.end(),
                                    [&](const NetworkInterface& each) { return each.name == interface; });
    return found == interfaces_.end() ? nullptr : &*found;
}

std::optional<IoctlAnswer> NetworkModels::answer(const SocketRequest& request) {
    if (inband_ && request.interface == kInbandInterface) {
        return answerInband(request.code, argumentOf(request));
    }
    if (pattern_ && request.interface == kPatternInterface) {
        return answerPattern(request.code, argumentOf(request));
    }
    return std::nullopt;
}

std::optional<IoctlAnswer> NetworkModels::answerInband(unsigned code, std::uint32_t argument) {
    if (code != kShutDown && code != kFibreLength) {
        return std::nullopt;
    }
    const auto refusing = refusing_.find(kInbandInterface);
    const bool isRefused = refusing != refusing_.end() && refusing->second.when.strikes();
    if (code == kShutDown) {
        if (isRefused) {
            return told("inbd emergency shutdown", {0, refusing->second.error});
        }
        inband_->shutDown();
        return told("inbd emergency shutdown", {});
    }
    const std::string what = "inbd fibre length of port " + std::to_string(argument);
    if (isRefused) {
        return told(what, {0, refusing->second.error});
    }
    const std::optional<std::int32_t> length = inband_->fibreLength(argument);
    if (!length) {
        return told(what, {0, std::errc::invalid_argument});
    }
    return told(what + ": " + std::to_string(*length), {*length});
}

std::optional<IoctlAnswer> NetworkModels::answerPattern(unsigned code, std::uint32_t argument) {
    if (code != kPatternOn && code != kPatternOff) {
        return std::nullopt;
    }
    const bool isOn = code == kPatternOn;
    const auto refusing = refusing_.find(kPatternInterface);
    const bool isRefused = refusing != refusing_.end() && refusing->second.when.strikes();
    const std::errc error = isRefused ? refusing->second.error : pattern_->setPattern(argument, isOn);
    return told("pattern lane " + std::to_string(argument) + (isOn ? " on" : " off"), {0, error});
}

IoctlAnswer NetworkModels::told(const std::string& what, IoctlAnswer answer) const {
    tell_(what + said(answer));
    return answer;
}

bool NetworkModels::setCarrier(const std::string& interface, bool isThere) {
    NetworkInterface* found = find(interface);
    if (found == nullptr) {
        return false;
    }
    if (plug_) {
        plug_(interface, isThere);
    }
    tell_(interface + (isThere ? " carrier up" : " carrier down"));
    return true;
}

std::optional<ModelTime> NetworkModels::nextChange(ModelTime start) const {
    if (changes_.empty()) {
        return std::nullopt;
    }
    return start + changes_.begin()->first;
}

void NetworkModels::change(ModelTime start, ModelTime now) {
    while (!changes_.empty() && start + changes_.begin()->first <= now) {
        const auto next = changes_.extract(changes_.begin());
        setCarrier(next.mapped().interface, next.mapped().hasCarrier);
    }
}

void NetworkModels::apply(const Fault& fault) {
    NetworkInterface* found = find(fault.device);
    if (found == nullptr) {
        refuse(fault, "no interface '" + fault.device + "'");
    }
    if (fault.action == "carrier-down") {
        return applyCarrier(fault, *found, false);
    }
    if (fault.action == "carrier-up") {
        return applyCarrier(fault, *found, true);
    }
    const bool hasRequests =
        (inband_ && fault.device == kInbandInterface) || (pattern_ && fault.device == kPatternInterface);
    if (fault.action == "refuse" && hasRequests) {
        const std::uint64_t error = fault.value.empty() ? EIO : numberOf(fault, kLargestErrno);
        if (error == 0) {
            refuse(fault, "0 is no error");
        }
        refusing_[fault.device] = {static_cast<std::errc>(error), fault.schedule};
        return;
    }
    refuse(fault, "no action '" + fault.action + "'; there are carrier-down, carrier-up" +
                      (hasRequests ? ", refuse" : ""));
}

void NetworkModels::applyCarrier(const Fault& fault, NetworkInterface& interface, bool hasCarrier) {
    if (fault.value.empty()) {
        interface.hasCarrier = hasCarrier;
        return;
    }
    changes_.emplace(numberOf(fault, kLongestWaitMs), Change{interface.name, hasCarrier});
}

}  // namespace boardsim
