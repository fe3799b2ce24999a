#include "Tests/Support/RegisterWindow/AccessRecorder.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace support {

namespace {

constexpr std::size_t kMostAccesses = 1 << 18;

}  // namespace

AccessRecorder::AccessRecorder() {
    // Recording happens in a signal handler, where nothing may be allocated.
    accesses_.reserve(kMostAccesses);
}

void AccessRecorder::onRead(std::uint64_t offset, std::vector<std::uint64_t> values) {
    sequences_[offset] = {std::move(values), 0};
}

void AccessRecorder::onWrite(std::uint64_t offset, WriteAction action) {
    actions_[offset] = std::move(action);
}

void AccessRecorder::beforeRead(std::span<std::byte> memory, std::uint64_t offset) {
    const auto found = sequences_.find(offset);
    if (found == sequences_.end() || found->second.next == found->second.values.size()) {
        return;
    }
    const std::uint64_t value = found->second.values[found->second.next++];
    std::memcpy(memory.data(), &value, std::min(memory.size(), sizeof value));
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
