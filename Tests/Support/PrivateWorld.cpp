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

constexpr auto kUsualNodes =
    std::to_array<std::string_view>({"null", "zero", "full", "random", "urandom", "tty", "ptmx", "pts", "shm",
                                     "fuse", "stdin", "stdout", "stderr", "fd"});
constexpr auto kOurs = std::to_array<std::string_view>({"pattern", "fw", "i2c", "fpga"});

template <typename Names>
bool isOneOf(const Names& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

PrivateWorld::PrivateWorld() {
    const auto cover = [this](const char* directory, const boardsim::KeepEntry& keep) {
        boardsim::coverDirectory(directory, keep);
        covered_.emplace_back(directory);
    };
    const auto notOurs = [](std::string_view name) { return !isOneOf(kOurs, name); };
    cover("/dev", [](std::string_view name) { return isOneOf(kUsualNodes, name); });
    cover("/opt", notOurs);
    cover("/tmp", notOurs);
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
