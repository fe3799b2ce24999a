#pragma once

#include <optional>

#include "Tools/boardsim/Cli/RunOptions.h"
#include "Tools/boardsim/Host/OutputFile.h"
#include "Tools/boardsim/Models/PanelScreen.h"

namespace boardsim {

/// The files that a run was asked for; nothing for those not asked for.
struct Outputs {
    /// Looks whether all can be written, and changes none.
    /// @throws std::system_error naming the first path that cannot be written.
    /// @throws std::invalid_argument when a picture would overwrite another output.
    explicit Outputs(const RunOptions& options);

    /// Makes the files that grow while the program runs.
    /// @throws std::system_error naming the first path that cannot be written.
    void start();

    /// Writes what is known of the picture when the program has ended: frame, screenshot and terminal view.
    /// Says so on standard error when there never was one.
    /// @throws std::exception when a file cannot be written.
    void writePicture(const PanelScreen& screen, const RunOptions& options);

    std::optional<OutputFile> frame;
    std::optional<OutputFile> screenshot;
    std::optional<OutputFile> log;
    std::optional<OutputFile> trace;
};

}  // namespace boardsim
