#pragma once

#include <stdlib.h>

#include <filesystem>
#include <string>

namespace support {

/// A directory below the working directory that is gone when the test is.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string pattern = std::filesystem::current_path() / "test-XXXXXX";
        path_ = mkdtemp(pattern.data());
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string file(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

}  // namespace support
