#include "Tools/boardinfo/Output.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Files/StandardDescriptors.h"

namespace boardinfo {
namespace {

constexpr int kBehindStandard = STDERR_FILENO + 1;

}  // namespace

Output::Output() : report_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, kBehindStandard)) {
    Valen::fillStandardDescriptors();
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
