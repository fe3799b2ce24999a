#include "Tests/Support/VirtualBoard.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "Tests/Support/TemporaryDirectory.h"

namespace support {
namespace {

std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> linesOf(const std::string& path) {
    std::vector<std::string> lines;
    std::istringstream text(contentsOf(path));
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The command as an ordinary user's: as it is when this test is one.
void becomeUser(std::vector<std::string>& words) {
    if (geteuid() != 0) {
        return;
    }
    const std::vector<std::string> become = {
        "/usr/bin/unshare",
        "--mount",
        "/bin/sh",
        "-c",
        "mount -t tmpfs none /mnt && mknod -m 666 /mnt/fuse c 10 229 && mount --bind /mnt/fuse /dev/fuse && "
        "umount -l /mnt && exec setpriv --reuid=65534 --regid=65534 --clear-groups \"$@\"",
        "sh"};
    words.insert(words.begin(), become.begin(), become.end());
}

int runAndWait(const std::vector<std::string>& command, const std::string& directory, const std::string& out,
               const std::string& err) {
    std::vector<char*> argv;
    for (const std::string& word : command) {
        argv.push_back(const_cast<char*>(word.c_str()));
    }
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT, 0600);
    if (!directory.empty()) {
        posix_spawn_file_actions_addchdir_np(&actions, directory.c_str());
    }
    pid_t child = -1;
    const int error = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (error != 0 || waitpid(child, &status, 0) != child) {
        ADD_FAILURE() << "cannot run " << command.front();
        return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

BoardRun VirtualBoard::run(const std::vector<std::string>& command) const {
    const TemporaryDirectory files;
    std::vector<std::string> words = {BOARDSIM,         "run", "--frame", files.file("frame"), "--log",
                                      files.file("log")};
    if (traced_) {
        words.insert(words.end(), {"--trace", files.file("trace")});
    }
    words.insert(words.end(), options_.begin(), options_.end());
    words.emplace_back("--");
    words.insert(words.end(), command.begin(), command.end());

    if (asUser_) {
        namespace fs = std::filesystem;
        fs::permissions(fs::path(files.file("frame")).parent_path(), fs::perms::all);
        becomeUser(words);
    }

    BoardRun run;
    run.status = runAndWait(words, directory_, files.file("out"), files.file("err"));
    run.out = contentsOf(files.file("out"));
    run.err = contentsOf(files.file("err"));
    run.frame = contentsOf(files.file("frame"));
    run.log = linesOf(files.file("log"));
    run.trace = linesOf(files.file("trace"));
    return run;
}

}  // namespace support
