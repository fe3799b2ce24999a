#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "Tools/boardsim/Host/Descriptor.h"

namespace boardsim {

/// A file that the user asked for, looked at before the program starts so that a bad path is known in time.
/// Nothing is created or changed until something is written; then the file holds that only. Whoever else
/// appends to the file meanwhile overwrites nothing. "-" stands for standard output. Not thread-safe.
class OutputFile {
public:
    /// Waits for a reader when the path is that of a FIFO, as the shell does.
    /// @throws std::system_error naming the path that cannot be opened for writing, or not be made.
    explicit OutputFile(std::string path);

    /// Appends to what was written before. Blocks until all is written.
    /// @throws std::system_error naming the path, for instance when the disk is full.
    void write(std::string_view text);
    void write(std::span<const std::byte> bytes);

    /// Makes the file, empty, at once, for files that grow while the program runs.
    /// @throws std::system_error naming the path.
    void startEmpty();

    /// Whether what is written to one could be lost when the other is started. Devices and pipes keep what
    /// they got, and so does standard output beside itself.
    bool wouldOverwrite(const OutputFile& other) const;

private:
    std::string path_;
    std::filesystem::path place_;  ///< where the file will be, without links; empty when it is there already
    Descriptor file_;              ///< none as long as there is no such file
    bool started_ = false;
};

}  // namespace boardsim
