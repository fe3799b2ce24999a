#include "Tests/Support/PrivateWorld.h"

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "Tools/boardsim/Host/Mounts.h"

namespace support {
namespace {

namespace fs = std::filesystem;

constexpr auto kUsualNodes =
    std::to_array<std::string_view>({"null", "zero", "full", "random", "urandom", "tty", "ptmx", "pts", "shm",
                                     "fuse", "stdin", "stdout", "stderr", "fd"});

bool isUsualNode(std::string_view name) {
    return std::find(kUsualNodes.begin(), kUsualNodes.end(), name) != kUsualNodes.end();
}

/// The entry of `directory` that leads to `path`, empty when none does.
fs::path entryTowards(const fs::path& path, const fs::path& directory) {
    const fs::path below = path.lexically_relative(directory);
    return below.empty() || *below.begin() == ".." ? fs::path() : *below.begin();
}

/// Keeps only what the running test needs of a directory in which the checkout may lie.
boardsim::KeepEntry keepCheckout(const fs::path& directory) {
    return [needed = std::array{entryTowards(fs::current_path(), directory),
                                entryTowards(fs::read_symlink("/proc/self/exe"), directory),
                                entryTowards(__FILE__, directory)}](std::string_view name) {
        return std::find(needed.begin(), needed.end(), name) != needed.end();
    };
}

}  // namespace

PrivateWorld::PrivateWorld() {
    const auto cover = [this](const char* directory, const boardsim::KeepEntry& keep) {
        boardsim::coverDirectory(directory, keep);
        covered_.emplace_back(directory);
    };
    cover("/dev", isUsualNode);
    cover("/opt", keepCheckout("/opt"));
    cover("/tmp", keepCheckout("/tmp"));
    cover("/sys/bus", boardsim::keepNothing);
}

PrivateWorld::~PrivateWorld() {
    for (auto directory = covered_.rbegin(); directory != covered_.rend(); ++directory) {
        umount2(directory->c_str(), MNT_DETACH);
    }
}

void PrivateWorld::write(const std::string& path, std::string_view bytes) {
    makeDirectory(std::filesystem::path(path).parent_path());
    std::ofstream file(path, std::ios::binary);
    file << bytes << std::flush;
    ASSERT_TRUE(file.good()) << path;
}

std::string PrivateWorld::read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void PrivateWorld::makeDirectory(const std::string& path) {
    std::filesystem::create_directories(path);
}

}  // namespace support
