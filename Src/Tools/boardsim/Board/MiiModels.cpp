#include "Tools/boardsim/Board/MiiModels.h"

#include <linux/sockios.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "Tools/boardsim/Board/MdioTrace.h"

namespace boardsim {

MiiModels::Port::Port(const MiiPart& part, const ModelClock& clock)
    : phy(makePhy(part.phy.model, clock)), port(part.interface, part.phy.address, bus) {
    bus.attach(part.phy.address, *phy);
}

MiiModels::MiiModels(const std::vector<MiiPart>& parts, const ModelClock& clock, const Tell& tell) {
    for (const MiiPart& part : parts) {
        Port& port = *ports_.emplace_back(std::make_unique<Port>(part, clock));
        port.bus.listen(
            [name = part.interface, tell](const MdioFrame& frame) { tell(name + " " + describe(frame)); });
    }
}

std::optional<IoctlAnswer> MiiModels::answer(SocketRequest& request) {
    Port* found = find(request.interface);
    mii_ioctl_data data{};
    if (found == nullptr || request.code >= SIOCDEVPRIVATE || request.data.size() < sizeof data) {
        return std::nullopt;
    }
    std::memcpy(&data, request.data.data(), sizeof data);
    const std::errc error = found->port.request(request.code, data);
    std::memcpy(request.data.data(), &data, sizeof data);
    return IoctlAnswer{0, error};
}

void MiiModels::apply(const Fault& fault) {
    Port* found = find(fault.device);
    if (found == nullptr) {
        throw std::invalid_argument("--fault " + fault.text + ": no interface '" + fault.device + "'");
    }
    if (fault.action == "no-answer") {
        found->phy->beSilent(fault.schedule);
    } else if (fault.action == "link-down") {
        found->phy->loseLink(fault.schedule);
    } else {
        throw std::invalid_argument("--fault " + fault.text + ": no action '" + fault.action +
                                    "'; there are no-answer, link-down");
    }
}

MiiModels::Port* MiiModels::find(const std::string& interface) const {
    const auto found = std::find_if(ports_.begin(), ports_.end(),
                                    [&](const auto& port) { return port->port.interface() == interface; });
    return found == ports_.end() ? nullptr : found->get();
}

}  // namespace boardsim
