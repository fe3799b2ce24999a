#pragma once

#include <cstdint>

#include "Tools/boardsim/Host/RegisterTrap/Preload/EventSocket.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterObserver.h"

namespace boardsim {

/// Tells the virtual board what the program does with its registers and its "screen" files.
class EventReporter final : public RegisterObserver {
public:
    constexpr EventReporter() = default;

    /// The process's reporter, or null when nobody wants reports: then the environment has no socket path.
    /// The environment is asked once. It is never destroyed.
    static EventReporter* instance() noexcept;

    void beforeRead(std::span<std::byte> memory, std::uint64_t offset) override;
    void afterAccess(const RegisterAccess& access, std::span<std::byte> memory) override;

    /// Any thread, outside signal handlers or within.
    void reportSeek(std::uint64_t position) noexcept;

protected:
    ~EventReporter() = default;

private:
    EventSocket socket_;
};

}  // namespace boardsim
