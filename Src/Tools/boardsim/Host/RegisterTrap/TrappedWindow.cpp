#include "Tools/boardsim/Host/RegisterTrap/TrappedWindow.h"

#include <sys/mman.h>

#include <cerrno>
#include <system_error>

#include "Tools/boardsim/Host/RegisterTrap/RegisterTrap.h"

namespace boardsim {

TrappedWindow::TrappedWindow(int descriptor, std::size_t length, RegisterObserver& observer) {
    MappingRequest request;
    request.length = length;
    request.protection = PROT_READ | PROT_WRITE;
    request.flags = MAP_SHARED;
    request.descriptor = descriptor;
    void* address = RegisterTrap::instance().map(request, observer);
    if (address == MAP_FAILED) {
        throw std::system_error(errno, std::generic_category(), "register window");
    }
    window_ = {static_cast<std::byte*>(address), length};
}

TrappedWindow::~TrappedWindow() {
    RegisterTrap::instance().unmap(window_.data(), window_.size());
}

}  // namespace boardsim
