#include "Tools/boardsim/Host/Preload.h"

#include <elf.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace boardsim {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLibraryName = "libboardsim-trap.so";
/// Relative to the folder of the program: in a build tree and in an installed one.
constexpr std::array kLibraryFolders{"../lib", "../lib/boardsim", "../libexec/boardsim"};
constexpr int kInterpretersInARow = 4;  // as many as the kernel follows

/// The interpreter that a script's first line names; empty when it is no script.
std::string interpreterOf(std::ifstream& file) {
    std::string line;
    std::getline(file, line);
    if (!line.starts_with("#!")) {
        return {};
    }
    std::istringstream words(line.substr(2));
    std::string interpreter;
    words >> interpreter;
    return interpreter;
}

template <typename Header, typename ProgramHeader>
bool lacksInterpreter(std::ifstream& file) {
    Header header{};
    if (!file.read(reinterpret_cast<char*>(&header), sizeof header)) {
        return false;
    }
    for (unsigned i = 0; i < header.e_phnum; ++i) {
        ProgramHeader segment{};
        file.seekg(static_cast<std::streamoff>(header.e_phoff + std::uint64_t{i} * header.e_phentsize));
        if (!file.read(reinterpret_cast<char*>(&segment), sizeof segment)) {
            return false;
        }
        if (segment.p_type == PT_INTERP) {
            return false;
        }
    }
    return true;
}

std::string joined(const char* variable, const char* separator, const std::string& added, bool inFront) {
    const char* present = std::getenv(variable);
    if (present == nullptr || *present == '\0') {
        return added;
    }
    return inFront ? added + separator + present : present + (separator + added);
}

}  // namespace

std::optional<std::string> findTrapLibrary() {
    std::error_code unknown;
    const fs::path self = fs::read_symlink("/proc/self/exe", unknown);
    for (const char* folder : kLibraryFolders) {
        const fs::path candidate = (self.parent_path() / folder / kLibraryName).lexically_normal();
        if (fs::is_regular_file(candidate, unknown)) {
            return candidate;
        }
    }
    return std::nullopt;
}

bool isStaticallyLinked(const std::string& program) {
    std::string path = program;
    for (int i = 0; i < kInterpretersInARow; ++i) {
        std::ifstream file(path, std::ios::binary);
        std::array<char, EI_NIDENT> start{};
        file.read(start.data(), start.size());
        const bool isElf = file && std::memcmp(start.data(), ELFMAG, SELFMAG) == 0;
        file.clear();
        file.seekg(0);
        if (isElf) {
            return start[EI_CLASS] == ELFCLASS64 ? lacksInterpreter<Elf64_Ehdr, Elf64_Phdr>(file)
                                                 : lacksInterpreter<Elf32_Ehdr, Elf32_Phdr>(file);
        }
        path = interpreterOf(file);
        if (path.empty()) {
            return false;
        }
    }
    return false;
}

std::vector<std::pair<std::string, std::string>> trapEnvironment(const std::string& library,
                                                                 const std::string& reports,
                                                                 const std::string& answers,
                                                                 const std::string& ranges) {
    std::vector<std::pair<std::string, std::string>> variables{
        {"LD_PRELOAD", joined("LD_PRELOAD", ":", library, true)},
        {"ASAN_OPTIONS", joined("ASAN_OPTIONS", ":", "verify_asan_link_order=0", false)},
    };
    if (!reports.empty()) {
        variables.emplace_back("BOARDSIM_TRAP_SOCKET", reports);
    }
    if (!answers.empty()) {
        variables.emplace_back("BOARDSIM_REGISTER_SOCKET", answers);
        variables.emplace_back("BOARDSIM_REGISTER_RANGES", ranges);
    }
    return variables;
}

}  // namespace boardsim
