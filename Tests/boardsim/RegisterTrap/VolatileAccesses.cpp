#include "Tests/boardsim/RegisterTrap/VolatileAccesses.h"

#include <cstddef>
#include <cstdint>

namespace registertrap {

namespace {

template <typename Value>
volatile Value& at(void* base, std::size_t offset) {
    return *reinterpret_cast<volatile Value*>(static_cast<std::byte*>(base) + offset);
}

[[gnu::noinline]] bool writesAndReadsOfEachWidth(void* base) {
    at<std::uint32_t>(base, 0x0) = 0xDEADBEEF;
    at<std::uint16_t>(base, 0x4) = 0xBEEF;
    at<std::uint8_t>(base, 0x6) = 0x5A;
    at<std::uint64_t>(base, 0x8) = 0x0123456789ABCDEF;
    bool ok = at<std::uint32_t>(base, 0x0) == 0xDEADBEEF;
    ok &= at<std::uint16_t>(base, 0x4) == 0xBEEF;
    ok &= at<std::uint8_t>(base, 0x6) == 0x5A;
    ok &= at<std::uint64_t>(base, 0x8) == 0x0123456789ABCDEF;
    return ok;
}

[[gnu::noinline]] bool readModifyWrites(void* base) {
    at<std::uint32_t>(base, 0x0) = at<std::uint32_t>(base, 0x0) | 0x10;
    at<std::uint32_t>(base, 0x0) = at<std::uint32_t>(base, 0x0) & ~1U;
    at<std::uint16_t>(base, 0x4) = static_cast<std::uint16_t>(at<std::uint16_t>(base, 0x4) + 1);
    at<std::uint8_t>(base, 0x6) = static_cast<std::uint8_t>(at<std::uint8_t>(base, 0x6) ^ 0xFF);
    return true;
}

[[gnu::noinline]] bool signedReads(void* base) {
    bool ok = at<std::int8_t>(base, 0x6) < 0;
    ok &= static_cast<int>(at<std::int16_t>(base, 0x4)) == -0x4110;
    ok &= static_cast<std::int64_t>(at<std::int32_t>(base, 0x0)) == -0x21524102;
    return ok;
}

[[gnu::noinline]] bool loops(void* base) {
    auto* word = &at<std::uint32_t>(base, 0x200);
    for (std::uint32_t i = 0; i < 4; ++i) {
        *word++ = i;
    }
    std::uint32_t sum = 0;
    for (int i = 0; i < 4; ++i) {
        sum += *--word;
    }
    return sum == 6;
}

[[gnu::noinline]] bool tests(void* base, int bit) {
    int seen = 0;
    if (at<std::uint32_t>(base, 0x0) & 0x80000000) {
        ++seen;
    }
    if (at<std::uint8_t>(base, 0x6) & 1) {
        ++seen;
    }
    if (at<std::uint32_t>(base, 0x0) & (1U << bit)) {
        ++seen;
    }
    at<std::uint8_t>(base, 0x300) = seen == 3;
    return seen == 3;
}

bool all(void* base) {
    bool ok = writesAndReadsOfEachWidth(base);
    ok &= readModifyWrites(base);
    ok &= signedReads(base);
    ok &= loops(base);
    ok &= tests(base, 4);
    return ok;
}

}  // namespace

const VolatileAccesses ACCESSES{all};

}  // namespace registertrap
