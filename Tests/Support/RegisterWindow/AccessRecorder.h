#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "Tools/boardsim/Host/RegisterTrap/RegisterObserver.h"

namespace support {

/// Records every access to a register window, and plays the device behind it by script. Scripts are set
/// before the accesses that they are for; the record is read when no other thread is accessing the window.
class AccessRecorder final : public boardsim::RegisterObserver {
public:
    using WriteAction = std::function<void(std::uint64_t value)>;

    AccessRecorder();

    const std::vector<boardsim::RegisterAccess>& accesses() const;
    void clear();

    void onRead(std::uint64_t offset, std::vector<std::uint64_t> values);
    void onWrite(std::uint64_t offset, WriteAction action);

    std::optional<std::uint64_t> beforeRead(std::span<std::byte> memory, std::uint64_t offset) override;
    void afterAccess(const boardsim::RegisterAccess& access, std::span<std::byte> memory) override;

private:
    struct Sequence {
        std::vector<std::uint64_t> values;
        std::size_t next = 0;
    };

    std::vector<boardsim::RegisterAccess> accesses_;
    std::map<std::uint64_t, Sequence> sequences_;
    std::map<std::uint64_t, WriteAction> actions_;
};

}  // namespace support
