#include "Tools/boardsim/Host/RegisterTrap/Preload/EventReporter.h"

#include <cstdlib>

#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"
#include "Tools/boardsim/Host/RegisterTrap/Preload/DeviceObserver.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterReply.h"
#include "Tools/boardsim/Host/RegisterTrap/SignalBlocker.h"

namespace boardsim {

namespace {

constexpr std::size_t kWidestAnswer = sizeof(RegisterReply::value);

/// Whether an environment variable is there and `take` can use its text; it says so when it cannot.
template <typename Take>
bool takeVariable(const char* variable, const char* expected, Take take) noexcept {
    const char* text = std::getenv(variable);
    if (!text) {
        return false;
    }
    if (take(text)) {
        return true;
    }
    MessageBuffer message;
    message << "boardsim: " << variable << " is no " << expected << ": '" << text << "'";
    message.print();
    return false;
}

TrapEvent describe(TrapEventKind kind, std::uint64_t offset, std::size_t width,
                   std::uint64_t value) noexcept {
    TrapEvent event;
    event.kind = kind;
    event.width = static_cast<std::uint8_t>(width);
    event.offset = offset;
    event.value = value;
    return event;
}

}  // namespace

EventReporter* EventReporter::instance() noexcept {
    static constinit EventReporter reporter;
    static const bool isWanted = reporter.readEnvironment();
    return isWanted ? &reporter : nullptr;
}

bool EventReporter::readEnvironment() noexcept {
    const bool reports = takeVariable(kTrapSocketVariable, "path of a socket",
                                      [this](const char* path) { return events_.setPath(path); });
    const bool answers = takeVariable(kRegisterSocketVariable, "path of a socket",
                                      [this](const char* path) { return requests_.setPath(path); }) &&
                         takeVariable(kRegisterRangesVariable, "list of register ranges",
                                      [this](const char* list) { return acting_.parse(list); });
    return reports || answers;
}

RegisterRange EventReporter::nextObserved(std::uint64_t from) const noexcept {
    return events_.isSet() ? RegisterObserver::nextObserved(from) : acting_.next(from);
}

bool EventReporter::answersFor(std::uint64_t offset, std::size_t width) const noexcept {
    return width <= kWidestAnswer && acting_.contain(offset);
}

std::optional<std::uint64_t> EventReporter::beforeRead(std::span<std::byte> memory, std::uint64_t offset) {
    if (!answersFor(offset, memory.size())) {
        // The board keeps the register file up to date by itself.
        return std::nullopt;
    }
    return requests_.ask(describe(TrapEventKind::Read, offset, memory.size(), 0));
}

void EventReporter::afterAccess(const RegisterAccess& access, std::span<std::byte>) {
    const bool isRead = access.direction == Direction::Read;
    const TrapEvent event = describe(isRead ? TrapEventKind::Read : TrapEventKind::Write, access.offset,
                                     access.width, access.value);
    if (!answersFor(access.offset, access.width)) {
        if (events_.isSet()) {
            events_.send(event);
        }
    } else if (!isRead) {
        requests_.ask(event);
    }
}

void EventReporter::reportSeek(std::uint64_t position) noexcept {
    if (!events_.isSet()) {
        return;
    }
    const SignalBlocker blocker;
    events_.send(describe(TrapEventKind::Seek, position, 0, 0));
}

RegisterObserver* deviceObserver() noexcept {
    return EventReporter::instance();
}

}  // namespace boardsim
