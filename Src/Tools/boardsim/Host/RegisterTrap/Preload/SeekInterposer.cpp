// The program's lseek. It goes before the C library's: the virtual board is told where a panel's "screen"
// file is positioned, which no file system hears of.
#include <sys/syscall.h>
#include <unistd.h>

#include "Tools/boardsim/Host/RegisterTrap/Preload/DescriptorPath.h"
#include "Tools/boardsim/Host/RegisterTrap/Preload/EventReporter.h"

namespace boardsim {

namespace {

off64_t seek(int descriptor, off64_t offset, int whence) noexcept {
    const long position = ::syscall(SYS_lseek, descriptor, offset, whence);
    if (position < 0) {
        return position;
    }
    if (EventReporter* reporter = EventReporter::instance()) {
        if (DescriptorPath(descriptor).text().ends_with("/screen")) {
            reporter->reportSeek(static_cast<std::uint64_t>(position));
        }
    }
    return position;
}

}  // namespace

}  // namespace boardsim

extern "C" {

off_t lseek(int descriptor, off_t offset, int whence) noexcept {
    return boardsim::seek(descriptor, offset, whence);
}

off64_t lseek64(int descriptor, off64_t offset, int whence) noexcept {
    return boardsim::seek(descriptor, offset, whence);
}

}  // extern "C"
