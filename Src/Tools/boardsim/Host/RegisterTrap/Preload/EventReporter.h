#pragma once

#include <cstdint>

#include "Tools/boardsim/Host/RegisterTrap/Preload/ActingRanges.h"
#include "Tools/boardsim/Host/RegisterTrap/Preload/EventSocket.h"
#include "Tools/boardsim/Host/RegisterTrap/Preload/RequestSocket.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterObserver.h"

namespace boardsim {

/// The virtual board as the program's registers meet it: it answers for the registers that act, and is told,
/// where it wants to know, what the program does with the others and with its "screen" files.
///
/// A register that acts is asked for before each read and told of each write, and the program goes on when
/// the board has answered; while nobody answers such a register is as the others are: plain memory. Accesses
/// wider than 8 bytes are none that a register answers.
class EventReporter final : public RegisterObserver {
public:
    constexpr EventReporter() = default;

    /// The process's reporter, or null when the board neither answers nor wants reports: then the environment
    /// has no socket path. The environment is asked once. It is never destroyed.
    static EventReporter* instance() noexcept;

    RegisterRange nextObserved(std::uint64_t from) const noexcept override;
    std::optional<std::uint64_t> beforeRead(std::span<std::byte> memory, std::uint64_t offset) override;
    void afterAccess(const RegisterAccess& access, std::span<std::byte> memory) override;

    /// Any thread, outside signal handlers or within.
    void reportSeek(std::uint64_t position) noexcept;

protected:
    ~EventReporter() = default;

private:
    bool readEnvironment() noexcept;
    bool answersFor(std::uint64_t offset, std::size_t width) const noexcept;

    EventSocket events_;
    RequestSocket requests_;
    ActingRanges acting_;
};

}  // namespace boardsim
