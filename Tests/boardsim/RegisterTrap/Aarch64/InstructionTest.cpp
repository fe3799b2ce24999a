// Every form of load and store runs twice, on ordinary memory and on a register window: registers and memory
// must come out the same, and the window must have seen the accesses that the form makes.
#include <gmock/gmock.h>

#include <array>
#include <ostream>
#include <string>
#include <vector>

#include "Tests/Support/RegisterWindow/RegisterWindow.h"

namespace registertrap {

namespace {

using support::RegisterWindow;
using testing::ExitedWithCode;

/// What an instruction under test finds and leaves.
struct Machine {
    std::uint64_t x9 = 0;
    std::uint64_t x10 = 0;
    std::uint64_t base = 0;                              ///< x11
    std::uint64_t index = 0;                             ///< x12
    alignas(16) std::array<std::uint64_t, 4> vectors{};  ///< q0 and q1
};

/// A function that runs one instruction on the processor with a Machine's registers.
#define CODE(text)                                                                                    \
    [](Machine& machine) {                                                                            \
        asm volatile("ldp x9, x10, [%0]\n\tldp x11, x12, [%0, #16]\n\tldp q0, q1, [%0, #32]\n\t" text \
                     "\n\tstp x9, x10, [%0]\n\tstp x11, x12, [%0, #16]\n\tstp q0, q1, [%0, #32]"      \
                     :                                                                                \
                     : "r"(&machine)                                                                  \
                     : "memory", "x9", "x10", "x11", "x12", "x13", "v0", "v1");                       \
    }

struct Form {
    const char* name;
    void (*code)(Machine&);
    unsigned width;
    const char* accesses;  ///< 'r' or 'w' each, one behind the other in memory
    int offset = 0;        ///< of the first one from the base
};

std::ostream& operator<<(std::ostream& out, const Form& form) {
    return out << form.name;
}

const Form kForms[] = {
    {"ldrb", CODE("ldrb w9, [x11]"), 1, "r"},
    {"ldrh", CODE("ldrh w9, [x11]"), 2, "r"},
    {"ldr_w", CODE("ldr w9, [x11]"), 4, "r"},
    {"ldr_x", CODE("ldr x9, [x11]"), 8, "r"},
    {"ldrsb_w", CODE("ldrsb w9, [x11]"), 1, "r"},
    {"ldrsb_x", CODE("ldrsb x9, [x11]"), 1, "r"},
    {"ldrsh_w", CODE("ldrsh w9, [x11]"), 2, "r"},
    {"ldrsh_x", CODE("ldrsh x9, [x11]"), 2, "r"},
    {"ldrsw", CODE("ldrsw x9, [x11]"), 4, "r"},
    {"ldr_into_nothing", CODE("ldr wzr, [x11]"), 4, "r"},
    {"strb", CODE("strb w9, [x11]"), 1, "w"},
    {"strh", CODE("strh w9, [x11]"), 2, "w"},
    {"str_w", CODE("str w9, [x11]"), 4, "w"},
    {"str_x", CODE("str x9, [x11]"), 8, "w"},
    {"str_zero", CODE("str wzr, [x11]"), 4, "w"},
    {"ldr_offset", CODE("ldr w9, [x11, #16]"), 4, "r", 16},
    {"str_offset", CODE("strh w9, [x11, #14]"), 2, "w", 14},
    {"ldur", CODE("ldur w9, [x11, #-3]"), 4, "r", -3},
    {"stur", CODE("stur x9, [x11, #-15]"), 8, "w", -15},
    {"ldursh", CODE("ldursh w9, [x11, #-2]"), 2, "r", -2},
    {"ldr_pre_indexed", CODE("ldr w9, [x11, #4]!"), 4, "r", 4},
    {"ldr_post_indexed", CODE("ldr w9, [x11], #4"), 4, "r"},
    {"str_pre_indexed", CODE("str x9, [x11, #-8]!"), 8, "w", -8},
    {"str_post_indexed", CODE("strb w9, [x11], #1"), 1, "w"},
    {"ldr_post_indexed_backwards", CODE("ldrsb x9, [x11], #-256"), 1, "r"},
    {"ldr_register", CODE("ldr w9, [x11, x12]"), 4, "r", 8},
    {"ldr_register_scaled", CODE("ldr w9, [x11, x12, lsl #2]"), 4, "r", 32},
    {"str_register_scaled", CODE("str x9, [x11, x12, lsl #3]"), 8, "w", 64},
    {"ldr_register_unsigned_word", CODE("ldrh w9, [x11, w12, uxtw #1]"), 2, "r", 16},
    {"ldr_register_signed_word", CODE("mvn w13, w12\n\tldrb w9, [x11, w13, sxtw]"), 1, "r", -9},
    {"str_register_signed", CODE("neg x13, x12\n\tstr w9, [x11, x13, sxtx]"), 4, "w", -8},
    {"ldtr", CODE("ldtr w9, [x11, #4]"), 4, "r", 4},
    {"ldp_w", CODE("ldp w9, w10, [x11]"), 4, "rr"},
    {"ldp_x", CODE("ldp x9, x10, [x11, #16]"), 8, "rr", 16},
    {"ldpsw", CODE("ldpsw x9, x10, [x11, #-8]"), 4, "rr", -8},
    {"ldp_pre_indexed", CODE("ldp w9, w10, [x11, #8]!"), 4, "rr", 8},
    {"ldp_post_indexed", CODE("ldp x9, x10, [x11], #16"), 8, "rr"},
    {"stp_w", CODE("stp w9, w10, [x11]"), 4, "ww"},
    {"stp_x", CODE("stp x9, xzr, [x11, #-16]"), 8, "ww", -16},
    {"stp_pre_indexed", CODE("stp x9, x10, [x11, #-16]!"), 8, "ww", -16},
    {"stp_post_indexed", CODE("stp w9, w10, [x11], #8"), 4, "ww"},
    {"ldnp", CODE("ldnp x9, x10, [x11]"), 8, "rr"},
    {"stnp", CODE("stnp w9, w10, [x11]"), 4, "ww"},
    {"ldarb", CODE("ldarb w9, [x11]"), 1, "r"},
    {"ldarh", CODE("ldarh w9, [x11]"), 2, "r"},
    {"ldar_w", CODE("ldar w9, [x11]"), 4, "r"},
    {"ldar_x", CODE("ldar x9, [x11]"), 8, "r"},
    {"stlrb", CODE("stlrb w9, [x11]"), 1, "w"},
    {"stlrh", CODE("stlrh w9, [x11]"), 2, "w"},
    {"stlr_w", CODE("stlr w9, [x11]"), 4, "w"},
    {"stlr_x", CODE("stlr x9, [x11]"), 8, "w"},
    {"ldr_b_clears_the_rest", CODE("ldr b0, [x11]"), 1, "r"},
    {"ldr_h_clears_the_rest", CODE("ldr h0, [x11]"), 2, "r"},
    {"ldr_s_clears_the_rest", CODE("ldr s0, [x11]"), 4, "r"},
    {"ldr_d_clears_the_rest", CODE("ldr d0, [x11, #8]"), 8, "r", 8},
    {"ldr_q", CODE("ldr q0, [x11]"), 16, "r"},
    {"str_b", CODE("str b0, [x11]"), 1, "w"},
    {"str_h", CODE("str h0, [x11]"), 2, "w"},
    {"str_s", CODE("str s0, [x11]"), 4, "w"},
    {"str_d", CODE("str d0, [x11]"), 8, "w"},
    {"str_q", CODE("str q0, [x11, #16]"), 16, "w", 16},
    {"ldr_q_post_indexed", CODE("ldr q0, [x11], #16"), 16, "r"},
    {"str_q_pre_indexed", CODE("str q0, [x11, #-16]!"), 16, "w", -16},
    {"ldur_q", CODE("ldur q1, [x11, #-7]"), 16, "r", -7},
    {"str_q_register", CODE("str q1, [x11, x12, lsl #4]"), 16, "w", 128},
    {"ldp_s", CODE("ldp s0, s1, [x11]"), 4, "rr"},
    {"ldp_d", CODE("ldp d0, d1, [x11]"), 8, "rr"},
    {"ldp_q", CODE("ldp q0, q1, [x11, #32]"), 16, "rr", 32},
    {"stp_q", CODE("stp q0, q1, [x11]"), 16, "ww"},
    {"stp_q_post_indexed", CODE("stp q0, q1, [x11], #32"), 16, "ww"},
    {"stp_d_pre_indexed", CODE("stp d0, d1, [x11, #16]!"), 8, "ww", 16},
};

constexpr std::uint64_t kValues[] = {0,          1,          0x7F,       0x80,  0xFFFF,
                                     0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, ~0ULL, 0x8181828284848888};
constexpr std::size_t kBase = 0x200;  ///< in a window, and in the memory to compare with
constexpr std::size_t kLength = 0x400;

class EmulatedInstruction : public testing::TestWithParam<Form> {
protected:
    static std::uint64_t pattern(std::size_t word, std::uint64_t value) {
        return value + word * 0x9E3779B97F4A7C15 * (word == kBase / 8 ? 0 : 1);
    }

    static Machine startState(std::uint64_t value, std::uint64_t base) {
        return {value ^ 0x5A, ~value, base, 8, {value, 1, ~value, 2}};
    }

    /// Of the position-dependent register only the difference counts.
    static std::array<std::uint64_t, 8> registers(const Machine& machine, std::uint64_t base) {
        return {machine.x9,         machine.x10,        machine.base - base, machine.index,
                machine.vectors[0], machine.vectors[1], machine.vectors[2],  machine.vectors[3]};
    }

    std::vector<support::AccessMatcher> expectedAccesses() const {
        std::vector<support::AccessMatcher> result;
        std::uint64_t offset = kBase + static_cast<std::uint64_t>(GetParam().offset);
        for (const char direction : std::string(GetParam().accesses)) {
            result.push_back(direction == 'r' ? support::Read(GetParam().width, offset)
                                              : support::Write(GetParam().width, offset));
            offset += GetParam().width;
        }
        return result;
    }

    RegisterWindow window_{0x1000};
};

TEST_P(EmulatedInstruction, DoesWhatTheProcessorDoes) {
    for (const std::uint64_t value : kValues) {
        alignas(16) std::array<std::uint64_t, kLength / 8> memory;
        for (std::size_t word = 0; word < memory.size(); ++word) {
            memory[word] = pattern(word, value);
            window_.set(8 * word, pattern(word, value));
        }
        const auto plainBase = reinterpret_cast<std::uint64_t>(memory.data()) + kBase;
        const auto windowBase = reinterpret_cast<std::uint64_t>(window_.address(kBase));
        Machine expected = startState(value, plainBase);
        Machine actual = startState(value, windowBase);

        GetParam().code(expected);
        GetParam().code(actual);

        EXPECT_EQ(registers(actual, windowBase), registers(expected, plainBase));
        for (std::size_t word = 0; word < memory.size(); ++word) {
            ASSERT_EQ(window_.get<std::uint64_t>(8 * word), memory[word]) << "at " << 8 * word;
        }
        ASSERT_THAT(window_.accesses(), testing::ElementsAreArray(expectedAccesses()));
        window_.clearAccesses();
        ASSERT_FALSE(HasFailure()) << std::hex << "value 0x" << value;
    }
}

INSTANTIATE_TEST_SUITE_P(LoadStore, EmulatedInstruction, testing::ValuesIn(kForms),
                         [](const auto& form) { return std::string(form.param.name); });

TEST(EmulatedInstructionDeathTest, AnExclusiveAccessEndsTheProcessWithItsText) {
    RegisterWindow window;
    EXPECT_EXIT(asm volatile("ldxr w9, [%0]"
                             :
                             : "r"(window.address(0x48))
                             : "x9"),
                ExitedWithCode(99),
                "boardsim: cannot emulate the access to register 0x48 by 'ldxr w9, \\[x[0-9]+\\]' "
                "\\([0-9a-f ]+\\) at 0x[0-9a-f]+\n");
}

TEST(EmulatedInstructionDeathTest, ABlockZeroingEndsTheProcessWithItsText) {
    RegisterWindow window;
    EXPECT_EXIT(asm volatile("dc zva, %0"
                             :
                             : "r"(window.address(0))),
                ExitedWithCode(99), "cannot emulate .*zva");
}

}  // namespace

}  // namespace registertrap
