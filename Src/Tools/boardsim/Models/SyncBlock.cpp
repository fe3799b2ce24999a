#include "Tools/boardsim/Models/SyncBlock.h"

#include <atomic>
#include <bit>
#include <cstring>

namespace boardsim {
namespace {

constexpr std::size_t kId = 0x04 / 4;
constexpr std::size_t kStatus = 0x0C / 4;
constexpr std::size_t kNetworkId = 0x10 / 4;
constexpr std::size_t kMaster = 0x1C / 4;
constexpr std::size_t kSyncWord = 0x34 / 4;
constexpr std::size_t kTimeCode = 0x38 / 4;

constexpr std::uint32_t kIsMaster = 1U << 0;
constexpr std::uint32_t kIs25Frames = 1U << 26;

constexpr std::uint64_t kNanosecondsOfSecond = 1'000'000'000;

// The low word comes first, and a program that maps the registers finds it there.
static_assert(std::endian::native == std::endian::little);
static_assert(std::atomic_ref<std::uint64_t>::is_always_lock_free);

/// The low word, then the three bytes above it.
void setId(SyncBlock::Words& words, std::size_t place, std::uint64_t id) {
    constexpr std::uint32_t kHighBytes = 0x00FFFFFF;
    words[place] = static_cast<std::uint32_t>(id);
    words[place + 1] = static_cast<std::uint32_t>(id >> 32) & kHighBytes;
}

SyncBlock::Words powerOn(const SyncSettings& settings) {
    SyncBlock::Words words{};
    setId(words, kId, settings.id);
    setId(words, kMaster, settings.master);
    words[kStatus] =
        (settings.isMaster ? kIsMaster : 0) | (settings.rate == FrameRate::Fps25 ? kIs25Frames : 0);
    words[kNetworkId] = settings.networkId;
    const TimeCodeBits bits = encode(settings.timeCode);
    words[kTimeCode] = static_cast<std::uint32_t>(bits);
    words[kTimeCode + 1] = static_cast<std::uint32_t>(bits >> 32);
    return words;
}

}  // namespace

SyncBlock::SyncBlock(const SyncSettings& settings) : rate_(settings.rate), powerOn_(powerOn(settings)) {}

void SyncBlock::attach(std::span<std::uint32_t, kWords> registers, ModelTime now) {
    registers_ = registers.data();
    start_ = now;
    frames_ = 0;
}

ModelTime SyncBlock::beginOf(std::uint64_t frame) const {
    // Rounded up: at this moment the frame has begun. Whole seconds apart, for the product to have room.
    const auto rate = static_cast<std::uint64_t>(rate_);
    const std::uint64_t part = (frame % rate * kNanosecondsOfSecond + rate - 1) / rate;
    return start_ + std::chrono::seconds(frame / rate) + std::chrono::nanoseconds(part);
}

std::optional<ModelTime> SyncBlock::nextFrame() const {
    if (registers_ == nullptr) {
        return std::nullopt;
    }
    return beginOf(frames_ + 1);
}

void SyncBlock::runUntil(ModelTime now) {
    if (registers_ == nullptr || now <= start_) {
        return;
    }
    using std::chrono::duration_cast;
    const auto passed = now - start_;
    const auto whole = duration_cast<std::chrono::seconds>(passed);
    const auto rate = static_cast<std::uint64_t>(rate_);
    const auto rest =
        static_cast<std::uint64_t>(duration_cast<std::chrono::nanoseconds>(passed - whole).count());
    const std::uint64_t begun =
        static_cast<std::uint64_t>(whole.count()) * rate + rest * rate / kNanosecondsOfSecond;
    if (begun > frames_) {
        pass(begun - frames_);
        frames_ = begun;
    }
}

void SyncBlock::pass(std::uint64_t frames) {
    std::uint32_t* const words = registers_ + kTimeCode;
    std::atomic_ref timeCode(*reinterpret_cast<std::uint64_t*>(words));
    std::uint64_t bits = timeCode.load(std::memory_order_relaxed);
    while (!timeCode.compare_exchange_weak(bits, later(bits, frames, rate_), std::memory_order_acq_rel)) {
    }
    std::atomic_ref(registers_[kSyncWord])
        .fetch_add(static_cast<std::uint32_t>(frames), std::memory_order_release);
}

RegisterValue SyncBlock::read(std::uint32_t offset, unsigned width) {
    if (offset + width > kBytes) {
        return {0, "no register is there"};
    }
    std::uint64_t value = 0;
    const std::uint32_t* const words = registers_ == nullptr ? powerOn_.data() : registers_;
    if (width > sizeof value) {
        return {0, "the registers are 32 bits wide"};
    }
    std::memcpy(&value, reinterpret_cast<const std::byte*>(words) + offset, width);
    return {value};
}

Refusal SyncBlock::write(std::uint32_t offset, unsigned width, std::uint64_t) {
    if (Refusal refused = refuseUnlessWord(offset, width)) {
        return refused;
    }
    const std::size_t word = offset / 4;
    if (word != kNetworkId && word != kTimeCode && word != kTimeCode + 1) {
        return "it can only be read";
    }
    return std::nullopt;
}

}  // namespace boardsim
