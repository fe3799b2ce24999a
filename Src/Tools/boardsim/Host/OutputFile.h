#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "Tools/boardsim/Host/Descriptor.h"

namespace boardsim {

/// A file that the user asked for, opened before the program starts so that a bad path is known in time. What
/// is in the file stays until something is written; then the file holds that only. A file that did not exist
/// and got nothing is removed again. "-" stands for standard output.
class OutputFile {
public:
    /// @throws std::system_error naming the path that cannot be opened for writing.
    explicit OutputFile(std::string path);
    OutputFile(OutputFile&&) noexcept = default;
    OutputFile& operator=(OutputFile&&) = delete;
    ~OutputFile();

    /// Appends to what was written before. Blocks until all is written.
    /// @throws std::system_error naming the path, for instance when the disk is full.
    void write(std::string_view text);
    void write(std::span<const std::byte> bytes);

    /// Empties the file at once, for files that grow while the program runs.
    void startEmpty();

private:
    std::string path_;
    Descriptor file_;
    bool created_ = false;
    bool started_ = false;
};

}  // namespace boardsim
