#include "Tools/boardinfo/Output.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

#include "Vl/Common/Files/ExactIO.h"

namespace boardinfo {
namespace {

constexpr int kBehindStandard = STDERR_FILENO + 1;

/// open(2) takes the lowest free number: these are free one after the other.
void fillStandardDescriptors() {
    int descriptor = -1;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor < kBehindStandard);
    ::close(descriptor);
}

}  // namespace

Output::Output() : report_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, kBehindStandard)) {
    fillStandardDescriptors();
    dup2(STDERR_FILENO, STDOUT_FILENO);
    std::signal(SIGPIPE, SIG_IGN);  // write() tells it
}

bool Output::isTerminal() const {
    return isatty(report_.get()) == 1;
}

std::size_t Output::terminalLines() const {
    winsize size{};
    return ioctl(report_.get(), TIOCGWINSZ, &size) == 0 ? size.ws_row : 0;
}

bool Output::write(std::string_view text) const {
    return Valen::writeExact(report_.get(), text);
}

}  // namespace boardinfo
