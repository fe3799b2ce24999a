#include "Tools/boardsim/Host/ProgramStart.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Tools/boardsim/Host/ExitStatus.h"
#include "Tools/boardsim/Host/ProgramSearch.h"

namespace boardsim {

void becomeProgram(const ProgramStart& start) {
    for (const auto& [name, value] : start.environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> words;
    for (const std::string& word : start.words) {
        words.push_back(const_cast<char*>(word.c_str()));
    }
    words.push_back(nullptr);

    sigprocmask(SIG_SETMASK, &start.signalMask, nullptr);
    execvp(words[0], words.data());
    // execvp() says "permission denied" when it was not allowed to look everywhere.
    const int error = errno == EACCES && !programExists(start.words[0], searchPath()) ? ENOENT : errno;
    std::fprintf(stderr, "boardsim: cannot run %s: %s\n", words[0], std::strerror(error));
    std::fflush(stderr);
    _exit(error == ENOENT || error == ENOTDIR ? kNotFound : kCannotExecute);
}

}  // namespace boardsim
