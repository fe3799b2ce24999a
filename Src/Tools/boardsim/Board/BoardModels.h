#pragma once

#include <vector>

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/BoardPart.h"
#include "Tools/boardsim/Board/BoardRegisters.h"
#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/FileTrace.h"
#include "Tools/boardsim/Board/GpioModels.h"
#include "Tools/boardsim/Board/HwmonModels.h"
#include "Tools/boardsim/Board/I2cDevices.h"
#include "Tools/boardsim/Board/MiiModels.h"
#include "Tools/boardsim/Board/NetworkModels.h"
#include "Tools/boardsim/Board/RomModel.h"
#include "Tools/boardsim/Board/StatusRegisters.h"
#include "Tools/boardsim/Board/W1Models.h"
#include "Tools/boardsim/Host/ActingFile.h"
#include "Tools/boardsim/Models/PanelRegisters.h"
#include "Tools/boardsim/Models/PanelScreen.h"
#include "Tools/boardsim/Models/VideoChip.h"

namespace boardsim {

/// Whether the board shows anything.
bool hasScreen(const BoardDescription& board, const BoardParts& missing);

/// The models of a board's devices, and the files in which a program finds those that act. Not thread-safe.
class BoardModels {
public:
    /// @param missing what the board lacks.
    /// @throws std::invalid_argument when no device of the board can have one of the faults.
    BoardModels(const BoardDescription& board, const BoardParts& missing, ScreenFault screen,
                const std::vector<Fault>& faults);
    BoardModels(const BoardModels&) = delete;
    BoardModels& operator=(const BoardModels&) = delete;

    PanelScreen& screen() { return screen_; }
    const PanelScreen& screen() const { return screen_; }
    PanelRegisters& panel() { return panel_; }

    /// All register blocks, the panel's among them.
    BoardRegisters& registers() { return registers_; }

    I2cDevices& i2c() { return i2c_; }

    /// All files that act, in an order that stays. Their functions refer to the models.
    const std::vector<ActingFile>& files() const { return files_; }

    /// All directories that act, in an order that stays. Their functions refer to the models.
    const std::vector<ServedTree>& trees() const { return trees_; }

    /// The network interfaces.
    NetworkModels& network() { return network_; }

    /// Whether any network interface answers requests that the kernel does not.
    bool answersForInterfaces() const { return !mii_.empty() || network_.answersRequests(); }

    /// @return nothing when it is the kernel's affair.
    std::optional<IoctlAnswer> answerForInterface(SocketRequest& request);

    /// The registers that tell something by themselves.
    StatusRegisters& status() { return status_; }
    const StatusRegisters& status() const { return status_; }

    /// `tell` gets a line for whatever a program does to the devices in files() and trees() and to network
    /// interfaces, the screen and what is in i2c() excepted, after it is done.
    void listen(Tell tell) { tell_ = std::move(tell); }

private:
    void addScreen(const std::string& path);
    void addVideoChip(const std::string& path);
    void apply(const Fault& fault);

    void tell(const std::string& line) const;

    PanelScreen screen_;
    PanelRegisters panel_;
    BoardRegisters registers_;
    Tell tell_;
    W1Models w1_;
    GpioModels gpio_;
    MiiModels mii_;
    NetworkModels network_;
    StatusRegisters status_;
    I2cDevices i2c_;
    HwmonModels hwmon_;
    std::optional<RomModel> rom_;
    VideoChip videoChip_;
    std::vector<ActingFile> files_;
    std::vector<ServedTree> trees_;
};

}  // namespace boardsim
