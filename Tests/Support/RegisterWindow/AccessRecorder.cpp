#include "Tests/Support/RegisterWindow/AccessRecorder.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace support {

namespace {

constexpr std::size_t kMostAccesses = 1 << 18;

/// To the compiler an access to the window is one volatile access and touches nothing else. In truth a signal
/// handler runs there and changes the record: nothing may be kept in registers or moved across.
void letTheCompilerSeeAccesses() {
    std::atomic_signal_fence(std::memory_order_seq_cst);
}

}  // namespace

AccessRecorder::AccessRecorder() {
    // Recording happens in a signal handler, where nothing may be allocated.
    accesses_.reserve(kMostAccesses);
}

const std::vector<boardsim::RegisterAccess>& AccessRecorder::accesses() const {
    letTheCompilerSeeAccesses();
    return accesses_;
}

void AccessRecorder::clear() {
    letTheCompilerSeeAccesses();
    accesses_.clear();
    letTheCompilerSeeAccesses();
}

void AccessRecorder::onRead(std::uint64_t offset, std::vector<std::uint64_t> values) {
    letTheCompilerSeeAccesses();
    sequences_[offset] = {std::move(values), 0};
    letTheCompilerSeeAccesses();
}

void AccessRecorder::onWrite(std::uint64_t offset, WriteAction action) {
    letTheCompilerSeeAccesses();
    actions_[offset] = std::move(action);
    letTheCompilerSeeAccesses();
}

std::optional<std::uint64_t> AccessRecorder::beforeRead(std::span<std::byte> memory, std::uint64_t offset) {
    const auto found = sequences_.find(offset);
    if (found == sequences_.end() || found->second.next == found->second.values.size()) {
        return std::nullopt;
    }
    const std::uint64_t value = found->second.values[found->second.next++];
    std::memcpy(memory.data(), &value, std::min(memory.size(), sizeof value));
    return std::nullopt;
}

void AccessRecorder::afterAccess(const boardsim::RegisterAccess& access, std::span<std::byte>) {
    if (accesses_.size() == kMostAccesses) {
        constexpr std::string_view kMessage = "register window: too many accesses to record\n";
        [[maybe_unused]] const auto written = ::write(STDERR_FILENO, kMessage.data(), kMessage.size());
        std::abort();
    }
    accesses_.push_back(access);
    if (access.direction == boardsim::Direction::Read) {
        return;
    }
    if (const auto found = actions_.find(access.offset); found != actions_.end()) {
        found->second(access.value);
    }
}

}  // namespace support
