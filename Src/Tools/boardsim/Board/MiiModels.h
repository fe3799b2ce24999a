#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/FileTrace.h"
#include "Tools/boardsim/Board/PhyParts.h"
#include "Tools/boardsim/Host/SocketRequests.h"
#include "Tools/boardsim/Models/MiiPort.h"

namespace boardsim {

/// The network interfaces of a board's processor, as far as they answer MII requests. Not thread-safe.
class MiiModels {
public:
    MiiModels(const std::vector<MiiPart>& parts, const ModelClock& clock, const Tell& tell);
    MiiModels(const MiiModels&) = delete;
    MiiModels& operator=(const MiiModels&) = delete;

    bool empty() const { return ports_.empty(); }

    /// @return nothing for interfaces that the board does not have and for requests private to a device.
    std::optional<IoctlAnswer> answer(SocketRequest& request);

    /// Lets an interface ("eth0") do something wrong: "no-answer" of its PHY, or "link-down".
    /// @throws std::invalid_argument when there is no such interface or action.
    void apply(const Fault& fault);

private:
    struct Port {
        Port(const MiiPart& part, const ModelClock& clock);

        std::unique_ptr<Phy> phy;
        MdioBus bus;
        MiiPort port;
    };

    Port* find(const std::string& interface) const;

    std::vector<std::unique_ptr<Port>> ports_;
};

}  // namespace boardsim
