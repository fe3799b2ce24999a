#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/FileTrace.h"
#include "Tools/boardsim/Board/NetworkDescription.h"
#include "Tools/boardsim/Host/SocketRequests.h"
#include "Tools/boardsim/Host/WorldPlan.h"
#include "Tools/boardsim/Models/InbandPort.h"
#include "Tools/boardsim/Models/ModelClock.h"
#include "Tools/boardsim/Models/PatternPort.h"

namespace boardsim {

/// The network interfaces of a board: which there are, when their wires are plugged in, and what the drivers
/// of "inbd" and "pattern" answer to requests of their own. Not thread-safe.
class NetworkModels {
public:
    /// @param interfaces all of them, with their carrier at power-on; "inbd" and "pattern" among them where
    ///        the board has these parts.
    NetworkModels(std::vector<NetworkInterface> interfaces, const std::optional<InbandPart>& inband,
                  const std::optional<PatternPart>& pattern, Tell tell);
    NetworkModels(const NetworkModels&) = delete;
    NetworkModels& operator=(const NetworkModels&) = delete;

    /// As they are when the power comes on.
    const std::vector<NetworkInterface>& interfaces() const { return interfaces_; }

    /// Whether any of them answers requests of its own.
    bool answersRequests() const { return inband_ || pattern_; }

    /// @return nothing for all that is the kernel's affair: it knows which interfaces there are, and that
    /// they know no such request.
    std::optional<IoctlAnswer> answer(const SocketRequest& request);

    /// What is done to a wire while the program runs is told to `plug`.
    using Plug = std::function<void(const std::string& interface, bool hasCarrier)>;
    void connect(Plug plug) { plug_ = std::move(plug); }

    /// Plugs the wire of an interface in, or pulls it. @return false when there is no such interface.
    bool setCarrier(const std::string& interface, bool isThere);

    /// When the next wire is to be plugged or pulled because a fault says so; counted from `start`.
    std::optional<ModelTime> nextChange(ModelTime start) const;
    void change(ModelTime start, ModelTime now);

    /// Lets an interface do something wrong:
    ///
    /// | action            | what happens                                                                |
    /// |-------------------|-----------------------------------------------------------------------------|
    /// | carrier-down[=MS] | its wire is not plugged in, or pulled so many milliseconds after the start  |
    /// | carrier-up=MS     | its wire is plugged in then                                                 |
    /// | refuse[=ERRNO]    | its requests of its own fail with the error, 5 (EIO) when there is no value |
    ///
    /// Of these only refuse counts accesses.
    /// @throws std::invalid_argument when there is no such interface or action.
    void apply(const Fault& fault);

private:
    struct Refusing {
        std::errc error;
        FaultSchedule when;
    };
    struct Change {
        std::string interface;
        bool hasCarrier;
    };

    NetworkInterface* find(const std::string& interface);
    std::optional<IoctlAnswer> answerInband(unsigned code, std::uint32_t argument);
    std::optional<IoctlAnswer> answerPattern(unsigned code, std::uint32_t argument);
    IoctlAnswer told(const std::string& what, IoctlAnswer answer) const;
    void applyCarrier(const Fault& fault, NetworkInterface& interface, bool hasCarrier);

    std::vector<NetworkInterface> interfaces_;
    std::optional<InbandPort> inband_;
    std::optional<PatternPort> pattern_;
    Tell tell_;
    Plug plug_;
    std::map<std::string, Refusing> refusing_;
    std::multimap<std::chrono::milliseconds, Change> changes_;  ///< still to come, after the start
};

}  // namespace boardsim
