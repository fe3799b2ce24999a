#include "Tests/boardsim/Support/Process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace processes {
namespace {

[[noreturn]] void become(const std::vector<std::string>& words, const std::function<bool()>& prepare,
                         int output) {
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    if (prepare && !prepare()) {
        _exit(99);
    }
    std::vector<char*> argv;
    for (const std::string& word : words) {
        argv.push_back(const_cast<char*>(word.c_str()));
    }
    argv.push_back(nullptr);
    execvp(argv[0], argv.data());
    _exit(98);
}

}  // namespace

Process::Process(const std::vector<std::string>& words, const std::function<bool()>& prepare) {
    std::array<int, 2> ends{};
    EXPECT_EQ(0, pipe2(ends.data(), O_CLOEXEC));
    id_ = fork();
    if (id_ == 0) {
        become(words, prepare, ends[1]);
    }
    close(ends[1]);
    pipe_ = ends[0];
}

Process::~Process() {
    if (id_ > 0) {
        signal(SIGKILL);
        wait();
    }
    close(pipe_);
}

bool Process::readSome() {
    std::array<char, 4096> buffer{};
    const ssize_t count = read(pipe_, buffer.data(), buffer.size());
    if (count > 0) {
        output_.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return count > 0;
}

void Process::waitForOutput(const std::string& text) {
    while (output_.find(text) == std::string::npos) {
        if (!readSome()) {
            FAIL() << "ended without saying '" << text << "', but: " << output_;
        }
    }
}

const std::string& Process::readToEnd() {
    while (readSome()) {
    }
    return output_;
}

void Process::signal(int number) const {
    kill(id_, number);
}

int Process::wait() {
    int status = 0;
    EXPECT_EQ(id_, waitpid(id_, &status, 0));
    id_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

int runToEnd(const std::vector<std::string>& words, std::string& output,
             const std::function<bool()>& prepare) {
    Process process(words, prepare);
    output = process.readToEnd();
    return process.wait();
}

std::vector<std::string> onBoard(const std::vector<std::string>& options,
                                 const std::vector<std::string>& program) {
    std::vector<std::string> words{BOARDSIM, "run"};
    words.insert(words.end(), options.begin(), options.end());
    words.emplace_back("--");
    words.insert(words.end(), program.begin(), program.end());
    return words;
}

}  // namespace processes
