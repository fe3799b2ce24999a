#include "Tools/boardsim/Host/ProgramSearch.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace boardsim {
namespace {

bool isExecutableFile(const std::string& path) {
    std::error_code none;
    return std::filesystem::is_regular_file(path, none) && access(path.c_str(), X_OK) == 0;
}

bool isThere(const std::string& path) {
    return access(path.c_str(), F_OK) == 0;
}

std::optional<std::string> findFile(const std::string& name, const std::string& path,
                                    bool (*fits)(const std::string&)) {
    if (name.find('/') != std::string::npos) {
        return fits(name) ? std::optional(name) : std::nullopt;
    }
    std::istringstream folders(path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string candidate = (folder.empty() ? "." : folder) + "/" + name;
        if (fits(candidate)) {
            return candidate;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> findProgram(const std::string& name, const std::string& path) {
    return findFile(name, path, isExecutableFile);
}

bool programExists(const std::string& name, const std::string& path) {
    return findFile(name, path, isThere).has_value();
}

std::string searchPath() {
    const char* path = std::getenv("PATH");
    return path == nullptr ? "" : path;
}

}  // namespace boardsim
