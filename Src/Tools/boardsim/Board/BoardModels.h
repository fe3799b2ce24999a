#pragma once

#include <vector>

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/BoardPart.h"
#include "Tools/boardsim/Board/BoardRegisters.h"
#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Board/I2cDevices.h"
#include "Tools/boardsim/Board/Teller.h"
#include "Tools/boardsim/Host/ActingFile.h"
#include "Tools/boardsim/Models/PanelRegisters.h"
#include "Tools/boardsim/Models/PanelScreen.h"
#include "Tools/boardsim/Models/VideoChip.h"

namespace boardsim {

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

    /// What happens on the board's buses is told to `teller`.
    void tell(const Teller& teller);

    /// All files that act, in an order that stays. Their functions refer to the models.
    const std::vector<ActingFile>& files() const { return files_; }

private:
    void addScreen(const std::string& path);
    void addVideoChip(const std::string& path);
    void apply(const Fault& fault);

    PanelScreen screen_;
    PanelRegisters panel_;
    BoardRegisters registers_;
    VideoChip videoChip_;
    I2cDevices i2c_;
    Teller teller_ = [](std::string_view, bool) {};
    std::vector<ActingFile> files_;
};

}  // namespace boardsim
