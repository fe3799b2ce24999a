// DirUtil: programs started without a shell, and their ends.
#include <alloca.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <optional>

#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Files/Errno.h"
#include "Vl/Common/Log/LogInterface.h"

namespace Valen {
namespace {

/// The size in bytes of the vector that fillVector() fills.
std::size_t vectorSize(va_list arguments) {
    va_list counted;
    va_copy(counted, arguments);
    std::size_t entries = 2;  // the file in front, the null pointer at the end
    while (va_arg(counted, const char*) != nullptr) {
        ++entries;
    }
    va_end(counted);
    return entries * sizeof(char*);
}

/// Makes `memory` what execvpe(3) takes: `file`, the arguments up to their null pointer, a null pointer.
char* const* fillVector(void* memory, const char* file, va_list arguments) {
    auto** const vector = static_cast<const char**>(memory);
    const char** entry = vector;
    for (const char* text = file; text != nullptr; text = va_arg(arguments, const char*)) {
        *entry++ = text;
    }
    *entry = nullptr;
    return const_cast<char* const*>(vector);  // exec's signature is older than const
}

/// @return the child's pid; -1, logged, when there is none.
pid_t start(const char* file, char* const* vector, char* const* environment) {
    // The child borrows this memory and this thread's stack until it execs: it reads the vector, no more.
    // fork would copy page tables for nothing, and posix_spawn does more than is needed here.
    const pid_t pid = vfork();  // NOLINT(clang-analyzer-security.insecureAPI.vfork): as said
    if (pid == 0) {
        execvpe(file, vector, environment);
        _exit(-1);
    }
    if (pid < 0) {
        VL_LOG(Firmware, ERROR, "unable to vfork %s: %s", file, errnoText());
    }
    return pid;
}

/// Waits through interruptions. @return the exit status; nothing, which is logged, when there is no such
/// child.
std::optional<int> collect(pid_t pid) {
    int status = 0;
    pid_t collected = -1;
    do {
        collected = waitpid(pid, &status, 0);
    } while (collected < 0 && errno == EINTR);
    if (collected != pid) {
        VL_LOG(Firmware, DEBUG, "failed to wait for process %d!", pid);
        return std::nullopt;
    }
    // The exit code alone: a child killed by a signal counts as 0, on purpose.
    return WEXITSTATUS(status);
}

}  // namespace

// The vectors live on the stack, where starting a program needs no heap, and have as many entries as the
// call has arguments. alloca: a function of its own could not hand them out.

int DirUtil::Exec(const char* file, ...) {
    va_list arguments;
    va_start(arguments, file);
    void* const memory = alloca(vectorSize(arguments));
    char* const* const vector = fillVector(memory, file, arguments);
    va_end(arguments);

    const pid_t pid = start(file, vector, environ);
    const std::optional<int> result = pid < 0 ? std::nullopt : collect(pid);
    if (result.value_or(0) != 0) {
        VL_LOG(Firmware, DEBUG, "result of %s is %d", file, *result);
    }
    return result.value_or(-1);
}

pid_t DirUtil::execNonBlockingEnvironment(const char** environment, const char* file, ...) {
    va_list arguments;
    va_start(arguments, file);
    void* const memory = alloca(vectorSize(arguments));
    char* const* const vector = fillVector(memory, file, arguments);
    va_end(arguments);

    const pid_t pid = start(file, vector, const_cast<char* const*>(environment));
    if (pid > 0) {
        VL_LOG(Firmware, DEBUG, "started process '%s' with pid %d", file, pid);
    }
    return pid;
}

int DirUtil::terminateProcess(int pid, bool force) {
    // A child that the signal did not reach is waited for all the same, on purpose.
    killProcess(pid, force);
    return waitForProcess(pid);
}

bool DirUtil::killProcess(int pid, bool force) {
    if (pid < 1) {
        VL_LOG(Firmware, DEBUG, "failed to terminate process %d: invalid pid!", pid);
        return false;
    }
    if (kill(pid, force ? SIGKILL : SIGTERM) != 0) {
        VL_LOG(Firmware, SERVICE, "unable to %skill process %d: %s", force ? "force " : "", pid, errnoText());
        return false;
    }
    return true;
}

int DirUtil::waitForProcess(int pid) {
    if (pid < 1) {
        VL_LOG(Firmware, DEBUG, "failed to wait for process %d: invalid pid!", pid);
        return pid;
    }
    const std::optional<int> result = collect(pid);
    if (result.value_or(0) != 0) {
        VL_LOG(Firmware, DEBUG, "result of process %d is %d", pid, *result);
    }
    return result.value_or(-1);
}

}  // namespace Valen
