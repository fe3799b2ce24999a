#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace processes {

/// A program that was started and runs beside the test, with its standard output and error in a pipe. Every
/// process that inherits the pipe counts as part of it.
class Process {
public:
    /// @param prepare runs in the new process before the program starts; the program is not started and the
    ///                process ends with status 99 when it returns false.
    explicit Process(const std::vector<std::string>& words, const std::function<bool()>& prepare = {});
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process();

    pid_t id() const { return id_; }

    /// Reads until the output holds `text`; fails the test when it ends before.
    void waitForOutput(const std::string& text);

    /// Reads until every process that could write is gone.
    const std::string& readToEnd();

    void signal(int number) const;

    /// @return the exit status as a shell sees it.
    int wait();

private:
    bool readSome();

    pid_t id_ = -1;
    int pipe_ = -1;
    std::string output_;
};

/// Starts, reads everything and waits. @return exit status; `output` gets what was printed.
int runToEnd(const std::vector<std::string>& words, std::string& output,
             const std::function<bool()>& prepare = {});

/// The words that run `program` on a board.
std::vector<std::string> onBoard(const std::vector<std::string>& options,
                                 const std::vector<std::string>& program);

}  // namespace processes
