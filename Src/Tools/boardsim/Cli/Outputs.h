#pragma once

#include <memory>

#include "Tools/boardsim/Cli/RunOptions.h"
#include "Tools/boardsim/Host/OutputFile.h"
#include "Tools/boardsim/Models/PanelScreen.h"

namespace boardsim {

/// The files that a run was asked for, open from before the program starts; null for those not asked for.
struct Outputs {
    /// @throws std::system_error naming the first path that cannot be opened.
    explicit Outputs(const RunOptions& options);

    /// Writes what is known of the picture when the program has ended: frame, screenshot and terminal view.
    /// Says so on standard error when there never was one.
    /// @throws std::exception when a file cannot be written.
    void writePicture(const PanelScreen& screen, const RunOptions& options) const;

    std::unique_ptr<OutputFile> frame;
    std::unique_ptr<OutputFile> screenshot;
    std::unique_ptr<OutputFile> log;
    std::unique_ptr<OutputFile> trace;
};

}  // namespace boardsim
