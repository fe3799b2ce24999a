#include "Tools/boardsim/Host/RegisterTrap/Preload/EventReporter.h"

#include <cstdlib>

#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"
#include "Tools/boardsim/Host/RegisterTrap/Preload/DeviceObserver.h"
#include "Tools/boardsim/Host/RegisterTrap/SignalBlocker.h"

namespace boardsim {

EventReporter* EventReporter::instance() noexcept {
    static constinit EventReporter reporter;
    static const bool isWanted = [] {
        const char* path = std::getenv(kTrapSocketVariable);
        if (!path) {
            return false;
        }
        if (reporter.socket_.setPath(path)) {
            return true;
        }
        MessageBuffer message;
        message << "boardsim: " << kTrapSocketVariable << " is no path of a socket: '" << path << "'";
        message.print();
        return false;
    }();
    return isWanted ? &reporter : nullptr;
}

void EventReporter::beforeRead(std::span<std::byte>, std::uint64_t) {
    // The board keeps the register file up to date by itself.
}

void EventReporter::afterAccess(const RegisterAccess& access, std::span<std::byte>) {
    TrapEvent event;
    event.kind = access.direction == Direction::Read ? TrapEventKind::Read : TrapEventKind::Write;
    event.width = access.width;
    event.offset = access.offset;
    event.value = access.value;
    socket_.send(event);
}

void EventReporter::reportSeek(std::uint64_t position) noexcept {
    TrapEvent event;
    event.kind = TrapEventKind::Seek;
    event.offset = position;
    const SignalBlocker blocker;
    socket_.send(event);
}

RegisterObserver* deviceObserver() noexcept {
    return EventReporter::instance();
}

}  // namespace boardsim
