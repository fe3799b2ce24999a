#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <system_error>
#include <type_traits>

namespace boardsim {

/// The memory of a thread that waits for the answer to a call. It is copied across as the kernel copies a
/// system call's arguments: whole or not at all as far as the result says.
/// Source: process_vm_readv(2). The caller must be a descendant of this process or one that it may trace.
class CallerMemory {
public:
    explicit CallerMemory(pid_t caller) : caller_(caller) {}

    /// Fill `into` from `address`, and write `bytes` to it.
    /// @return nothing wrong (a default errc), or EFAULT for memory that is not there or has no such access,
    /// EPERM where the system forbids to look, ESRCH when the caller has died.
    std::errc read(std::uint64_t address, std::span<std::byte> into) const;
    std::errc write(std::uint64_t address, std::span<const std::byte> bytes) const;

    /// The same for one record in the layout that caller and boardsim share.
    template <typename Record>
    std::errc readRecord(std::uint64_t address, Record& record) const {
        static_assert(std::is_trivially_copyable_v<Record>);
        return read(address, std::as_writable_bytes(std::span(&record, 1)));
    }
    template <typename Record>
    std::errc writeRecord(std::uint64_t address, const Record& record) const {
        static_assert(std::is_trivially_copyable_v<Record>);
        return write(address, std::as_bytes(std::span(&record, 1)));
    }

private:
    pid_t caller_;
};

}  // namespace boardsim
