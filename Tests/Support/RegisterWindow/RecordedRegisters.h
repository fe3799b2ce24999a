#pragma once

#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "Tests/Support/RegisterWindow/AccessMatchers.h"
#include "Tests/Support/RegisterWindow/AccessRecorder.h"

namespace support {

/// A register file under test: what the two kinds of register window have in common. The test looks at the
/// registers and sets them past the window, so that only the code under test is recorded.
/// Not thread-safe, but the code under test may use many threads.
class RecordedRegisters {
public:
    RecordedRegisters(const RecordedRegisters&) = delete;
    RecordedRegisters& operator=(const RecordedRegisters&) = delete;

    /// All accesses since construction or clearAccesses(), in the order in which they took effect.
    const std::vector<boardsim::RegisterAccess>& accesses() const { return recorder_.accesses(); }
    void clearAccesses() { recorder_.clear(); }

    /// Sets a register, or looks at it; any offset, also an odd one. Is not recorded.
    template <std::unsigned_integral Value>
    void set(std::size_t offset, Value value) {
        std::atomic_signal_fence(std::memory_order_seq_cst);
        std::memcpy(memory(offset, sizeof value).data(), &value, sizeof value);
        std::atomic_signal_fence(std::memory_order_seq_cst);
    }
    template <std::unsigned_integral Value>
    Value get(std::size_t offset) const {
        Value value;
        std::atomic_signal_fence(std::memory_order_seq_cst);
        std::memcpy(&value, memory(offset, sizeof value).data(), sizeof value);
        return value;
    }
    void set8(std::size_t offset, std::uint8_t value) { set(offset, value); }
    void set16(std::size_t offset, std::uint16_t value) { set(offset, value); }
    void set32(std::size_t offset, std::uint32_t value) { set(offset, value); }
    std::uint8_t get8(std::size_t offset) const { return get<std::uint8_t>(offset); }
    std::uint16_t get16(std::size_t offset) const { return get<std::uint16_t>(offset); }
    std::uint32_t get32(std::size_t offset) const { return get<std::uint32_t>(offset); }

    /// Each read at exactly this offset finds the next of these values; the last one stays.
    void onRead(std::size_t offset, std::vector<std::uint64_t> values) {
        recorder_.onRead(offset, std::move(values));
    }

    /// Calls `action` after each write at exactly this offset, on the writing thread and before it goes on.
    /// The action may set() and get(); it must not access the window, nor allocate memory under TSan.
    /// Variables of the test that it changes should be volatile or atomic: the compiler does not know that it
    /// runs.
    void onWrite(std::size_t offset, AccessRecorder::WriteAction action) {
        recorder_.onWrite(offset, std::move(action));
    }

protected:
    /// Takes over the descriptor, makes the file `length` bytes long and maps it for the test.
    /// @throws std::system_error when that fails
    RecordedRegisters(int descriptor, std::size_t length);
    ~RecordedRegisters();

    int descriptor() const { return descriptor_; }
    AccessRecorder& recorder() { return recorder_; }

private:
    /// @throws std::out_of_range when it is not wholly inside the register file
    std::span<std::byte> memory(std::size_t offset, std::size_t width) const;

    int descriptor_;
    std::span<std::byte> registers_;
    AccessRecorder recorder_;
};

}  // namespace support
