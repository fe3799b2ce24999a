// The least that a program can do: it ends. Linked without start files and loader, so that what is measured
// is the starting and the collecting of a process, not its own coming up.
#include <unistd.h>

extern "C" [[noreturn]] void _start() {
    _exit(0);
}
