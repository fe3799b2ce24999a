#include "Tools/boardsim/Host/RegisterTrap/Aarch64/LoadStore.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <ostream>
#include <string>

namespace registertrap {

namespace {

/// An instruction that looks like a load or store at first sight, but is not emulated.
struct Refused {
    const char* name;
    std::uint32_t word;
};

std::ostream& operator<<(std::ostream& out, const Refused& refused) {
    return out << refused.name;
}

const Refused kRefused[] = {
    {"ldadd", 0xB8290149},          // ldadd w9, w9, [x10]
    {"swp", 0xB8298149},            // swp w9, w9, [x10]
    {"ldxr", 0x885F7D49},           // ldxr w9, [x10]
    {"stxr", 0x880B7D49},           // stxr w11, w9, [x10]
    {"ldaxr", 0x885FFD49},          // ldaxr w9, [x10]
    {"cas", 0x88AB7D49},            // cas w11, w9, [x10]
    {"ld1", 0x4C407940},            // ld1 {v0.4s}, [x10]
    {"literal", 0x18000009},        // ldr w9, .
    {"prefetch", 0xF9800140},       // prfm pldl1keep, [x10]
    {"block_zeroing", 0xD50B742A},  // dc zva, x10
    {"addition", 0x8B0B0149},       // add x9, x10, x11
    {"all_zeros", 0x00000000},     {"all_ones", 0xFFFFFFFF},
};

class RefusedInstruction : public testing::TestWithParam<Refused> {};

TEST_P(RefusedInstruction, IsNotTakenForALoadOrStore) {
    EXPECT_FALSE(boardsim::Aarch64::decode(GetParam().word).has_value());
}

INSTANTIATE_TEST_SUITE_P(LoadStore, RefusedInstruction, testing::ValuesIn(kRefused),
                         [](const auto& refused) { return std::string(refused.param.name); });

}  // namespace

}  // namespace registertrap
