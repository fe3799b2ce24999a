#include "Tools/boardsim/Board/RomModel.h"

#include <stdexcept>

namespace boardsim {
namespace {

[[noreturn]] void refuse(const Fault& fault, const std::string& why) {
    throw std::invalid_argument("--fault " + fault.text + ": " + why);
}

Transfer toTransfer(const FileAnswer& answer) {
    return {answer.count, answer.error};
}

struct Action {
    std::string_view name;
    std::optional<FaultSchedule> RomFaults::*fault;
};
constexpr std::array<Action, 4> kActions{{
    {"fail", &RomFaults::failures},
    {"short-read", &RomFaults::shortReads},
    {"short-write", &RomFaults::shortWrites},
    {"corrupt", &RomFaults::corruption},
}};

}  // namespace

RomModel::RomModel(const RomPart& part, Tell tell) : tell_(std::move(tell)), rom_(encodeRom(part)) {}

ActingFile RomModel::device() {
    FileCalls calls;
    calls.read = [this](std::uint64_t offset, std::span<std::byte> into) {
        return toTransfer(rom_.read(offset, into));
    };
    calls.write = [this](std::uint64_t offset, std::span<const std::byte> bytes) {
        return toTransfer(rom_.write(offset, bytes));
    };
    return sharedFile("/dev/bootrom", traced("rom", std::move(calls), tell_));
}

void RomModel::apply(const Fault& fault) {
    if (fault.device != "bootrom") {
        refuse(fault, "no device '" + fault.device + "'; there is bootrom");
    }
    for (const Action& action : kActions) {
        if (action.name != fault.action) {
            continue;
        }
        if (action.name == "corrupt") {
            rom_.faults().corrupt = numberOf(fault, IdentityRom::kBytes - 1);
        } else if (!fault.value.empty()) {
            refuse(fault, fault.action + " has no value");
        }
        rom_.faults().*action.fault = fault.schedule;
        return;
    }
    refuse(fault, "no action '" + fault.action + "'; there are fail, short-read, short-write, corrupt");
}

}  // namespace boardsim
