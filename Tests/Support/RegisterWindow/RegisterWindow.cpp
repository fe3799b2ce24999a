#include "Tests/Support/RegisterWindow/RegisterWindow.h"

#include <sys/mman.h>

namespace support {

RegisterWindow::RegisterWindow(std::size_t length)
    : RecordedRegisters(::memfd_create("registers", MFD_CLOEXEC), length),
      window_(descriptor(), length, recorder()) {}

}  // namespace support
