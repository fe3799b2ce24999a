#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>

#include "Tools/boardsim/Host/RegisterTrap/Preload/DeviceObserver.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterTrap.h"

namespace support {

namespace {

constexpr const char* kDevice = "/dev/fpga";

constinit std::atomic<boardsim::RegisterObserver*> observer{nullptr};

}  // namespace

DeviceRegisterWindow::DeviceRegisterWindow(std::size_t length)
    : RecordedRegisters(::open(kDevice, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600), length) {
    observer = &recorder();
}

DeviceRegisterWindow::~DeviceRegisterWindow() {
    observer = nullptr;
    boardsim::RegisterTrap::instance().abandon(recorder());
    ::unlink(kDevice);
}

}  // namespace support

boardsim::RegisterObserver* boardsim::deviceObserver() noexcept {
    return support::observer;
}
