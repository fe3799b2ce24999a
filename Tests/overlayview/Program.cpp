#include "Tests/overlayview/Program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

namespace overlays {
namespace {

std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

ProgramRun runOverlayview(const std::string& directory, const std::vector<std::string>& words) {
    std::vector<char*> argv{const_cast<char*>(OVERLAYVIEW)};
    for (const std::string& word : words) {
        argv.push_back(const_cast<char*>(word.c_str()));
    }
    argv.push_back(nullptr);

    const std::string out = directory + "/out";
    const std::string err = directory + "/err";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), flags, 0600);
    pid_t id = -1;
    EXPECT_EQ(0, posix_spawn(&id, argv[0], &actions, nullptr, argv.data(), environ));
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    EXPECT_EQ(id, waitpid(id, &status, 0));
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), contents(out), contents(err)};
}

}  // namespace overlays
