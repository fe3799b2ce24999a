// Every instruction form runs twice, on ordinary memory and on a register window: registers, flags and memory
// must come out the same, and the window must have seen the accesses that the form makes.
#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "Tests/Support/RegisterWindow/RegisterWindow.h"
#include "Tests/boardsim/RegisterTrap/X86/Machine.h"

namespace registertrap {

namespace {

using boardsim::Direction;
using boardsim::RegisterAccess;
using support::RegisterWindow;

constexpr std::uint64_t kCarry = 0x1, kParity = 0x4, kAdjust = 0x10, kZero = 0x40, kSign = 0x80,
                        kOverflow = 0x800;
constexpr std::uint64_t kAll = kCarry | kParity | kAdjust | kZero | kSign | kOverflow;
constexpr std::uint64_t kAllButAdjust = kAll & ~kAdjust;
constexpr std::uint64_t kAllButAdjustAndOverflow = kAllButAdjust & ~kOverflow;
constexpr std::uint64_t kCarryAndOverflow = kCarry | kOverflow;
constexpr std::uint64_t kCarryAndZero = kCarry | kZero;

/// The accesses of one run: 'r' or 'w' each, all of the same width and to the same place.
struct Form {
    const char* name;
    Code code;
    unsigned width;
    const char* accesses;
    std::uint64_t definedFlags = kAll;
    bool needsAvx = false;
};

std::ostream& operator<<(std::ostream& out, const Form& form) {
    return out << form.name;
}

#define BINARY_OF_WIDTH(operation, suffix, bytes, reg, flags)                                           \
    {operation suffix "_register_to_memory", CODE(operation suffix " %%" reg ",(%%rdi)"), bytes, "rw",  \
     flags},                                                                                            \
        {operation suffix "_memory_to_register", CODE(operation suffix " (%%rdi),%%" reg), bytes, "r",  \
         flags},                                                                                        \
        {operation suffix "_immediate_to_memory", CODE(operation suffix " $0x5a,(%%rdi)"), bytes, "rw", \
         flags},                                                                                        \
    {                                                                                                   \
        operation suffix "_negative_immediate_to_memory", CODE(operation suffix " $-3,(%%rdi)"), bytes, \
            "rw", flags                                                                                 \
    }

#define BINARY(operation, flags)                                                                      \
    BINARY_OF_WIDTH(operation, "b", 1, "cl", flags), BINARY_OF_WIDTH(operation, "w", 2, "cx", flags), \
        BINARY_OF_WIDTH(operation, "l", 4, "ecx", flags), BINARY_OF_WIDTH(operation, "q", 8, "rcx", flags)

#define COMPARE_OF_WIDTH(operation, suffix, bytes, reg, flags)                                              \
    {operation suffix "_register_with_memory", CODE(operation suffix " %%" reg ",(%%rdi)"), bytes, "r",     \
     flags},                                                                                                \
        {operation suffix "_memory_with_register", CODE(operation suffix " (%%rdi),%%" reg), bytes, "r",    \
         flags},                                                                                            \
    {                                                                                                       \
        operation suffix "_immediate_with_memory", CODE(operation suffix " $-7,(%%rdi)"), bytes, "r", flags \
    }

#define COMPARE(operation, flags)                                                                       \
    COMPARE_OF_WIDTH(operation, "b", 1, "cl", flags), COMPARE_OF_WIDTH(operation, "w", 2, "cx", flags), \
        COMPARE_OF_WIDTH(operation, "l", 4, "ecx", flags), COMPARE_OF_WIDTH(operation, "q", 8, "rcx", flags)

#define UNARY(operation, flags)                                                \
    {operation "b_memory", CODE(operation "b (%%rdi)"), 1, "rw", flags},       \
        {operation "w_memory", CODE(operation "w (%%rdi)"), 2, "rw", flags},   \
        {operation "l_memory", CODE(operation "l (%%rdi)"), 4, "rw", flags}, { \
        operation "q_memory", CODE(operation "q (%%rdi)"), 8, "rw", flags      \
    }

#define SHIFT(operation)                                                                                    \
    {operation "b_by_one", CODE(operation "b (%%rdi)"), 1, "rw", kAllButAdjust},                            \
        {operation "w_by_one", CODE(operation "w (%%rdi)"), 2, "rw", kAllButAdjust},                        \
        {operation "l_by_one", CODE(operation "l (%%rdi)"), 4, "rw", kAllButAdjust},                        \
        {operation "q_by_one", CODE(operation "q (%%rdi)"), 8, "rw", kAllButAdjust},                        \
        {operation "b_by_five", CODE(operation "b $5,(%%rdi)"), 1, "rw", kAllButAdjustAndOverflow},         \
        {operation "w_by_nine", CODE(operation "w $9,(%%rdi)"), 2, "rw", kAllButAdjustAndOverflow},         \
        {operation "l_by_register", CODE(operation "l %%cl,(%%rdi)"), 4, "rw", kAllButAdjustAndOverflow}, { \
        operation "q_by_register", CODE(operation "q %%cl,(%%rdi)"), 8, "rw", kAllButAdjustAndOverflow      \
    }

#define CONDITION(condition)                                                        \
    {"set" condition, CODE("set" condition " (%%rdi)"), 1, "w"},                    \
        {"cmov" condition "w", CODE("cmov" condition "w (%%rdi),%%cx"), 2, "r"},    \
        {"cmov" condition "l", CODE("cmov" condition "l (%%rdi),%%ecx"), 4, "r"}, { \
        "cmov" condition "q", CODE("cmov" condition "q (%%rdi),%%rcx"), 8, "r"      \
    }

const Form kMoves[] = {
    {"movb_load", CODE("movb (%%rdi),%%cl"), 1, "r"},
    {"movb_load_high_byte", CODE("movb (%%rdi),%%ch"), 1, "r"},
    {"movw_load", CODE("movw (%%rdi),%%cx"), 2, "r"},
    {"movl_load_clears_the_upper_half", CODE("movl (%%rdi),%%ecx"), 4, "r"},
    {"movq_load", CODE("movq (%%rdi),%%rcx"), 8, "r"},
    {"movb_store", CODE("movb %%cl,(%%rdi)"), 1, "w"},
    {"movb_store_high_byte", CODE("movb %%ch,(%%rdi)"), 1, "w"},
    {"movw_store", CODE("movw %%cx,(%%rdi)"), 2, "w"},
    {"movl_store", CODE("movl %%ecx,(%%rdi)"), 4, "w"},
    {"movq_store", CODE("movq %%rcx,(%%rdi)"), 8, "w"},
    {"movb_immediate", CODE("movb $0x81,(%%rdi)"), 1, "w"},
    {"movw_immediate", CODE("movw $0x8182,(%%rdi)"), 2, "w"},
    {"movl_immediate", CODE("movl $0x81828384,(%%rdi)"), 4, "w"},
    {"movq_immediate_is_sign_extended", CODE("movq $-5,(%%rdi)"), 8, "w"},
    {"movl_into_its_own_address", CODE("push %%rdi\n\tmovl (%%rdi),%%edi\n\tmovl %%edi,%%ecx\n\tpop %%rdi"),
     4, "r"},
    {"movzbw", CODE("movzbw (%%rdi),%%cx"), 1, "r"},
    {"movzbl", CODE("movzbl (%%rdi),%%ecx"), 1, "r"},
    {"movzbq", CODE("movzbq (%%rdi),%%rcx"), 1, "r"},
    {"movzwl", CODE("movzwl (%%rdi),%%ecx"), 2, "r"},
    {"movzwq", CODE("movzwq (%%rdi),%%rcx"), 2, "r"},
    {"movsbw", CODE("movsbw (%%rdi),%%cx"), 1, "r"},
    {"movsbl", CODE("movsbl (%%rdi),%%ecx"), 1, "r"},
    {"movsbq", CODE("movsbq (%%rdi),%%rcx"), 1, "r"},
    {"movswl", CODE("movswl (%%rdi),%%ecx"), 2, "r"},
    {"movswq", CODE("movswq (%%rdi),%%rcx"), 2, "r"},
    {"movslq", CODE("movslq (%%rdi),%%rcx"), 4, "r"},
    {"movntil", CODE("movntil %%ecx,(%%rdi)"), 4, "w"},
    {"movntiq", CODE("movntiq %%rcx,(%%rdi)"), 8, "w"},
    {"movbew_load", CODE("movbew (%%rdi),%%cx"), 2, "r"},
    {"movbel_load", CODE("movbel (%%rdi),%%ecx"), 4, "r"},
    {"movbeq_load", CODE("movbeq (%%rdi),%%rcx"), 8, "r"},
    {"movbel_store", CODE("movbel %%ecx,(%%rdi)"), 4, "w"},
    {"movl_indexed", CODE("mov $3,%%edx\n\tmovl -12(%%rdi,%%rdx,4),%%ecx"), 4, "r"},
    {"movl_behind_the_base", CODE("lea 0x1234(%%rdi),%%rdx\n\tmovl %%ecx,-0x1234(%%rdx)\n\tmov $0,%%edx"), 4,
     "w"},
};

const Form kArithmetic[] = {
    BINARY("add", kAll),
    BINARY("adc", kAll),
    BINARY("sub", kAll),
    BINARY("sbb", kAll),
    BINARY("and", kAllButAdjust),
    BINARY("or", kAllButAdjust),
    BINARY("xor", kAllButAdjust),
    COMPARE("cmp", kAll),
    COMPARE("test", kAllButAdjust),
    UNARY("inc", kAll),
    UNARY("dec", kAll),
    UNARY("neg", kAll),
    UNARY("not", kAll),
    SHIFT("shl"),
    SHIFT("shr"),
    SHIFT("sar"),
    {"imulw", CODE("imulw (%%rdi),%%cx"), 2, "r", kCarryAndOverflow},
    {"imull", CODE("imull (%%rdi),%%ecx"), 4, "r", kCarryAndOverflow},
    {"imulq", CODE("imulq (%%rdi),%%rcx"), 8, "r", kCarryAndOverflow},
    {"imull_by_immediate", CODE("imull $1000,(%%rdi),%%ecx"), 4, "r", kCarryAndOverflow},
    {"imulq_by_immediate", CODE("imulq $-7,(%%rdi),%%rcx"), 8, "r", kCarryAndOverflow},
    {"btw", CODE("btw $15,(%%rdi)"), 2, "r", kCarryAndZero},
    {"btl", CODE("btl $31,(%%rdi)"), 4, "r", kCarryAndZero},
    {"btq", CODE("btq $7,(%%rdi)"), 8, "r", kCarryAndZero},
    {"btsl", CODE("btsl $0,(%%rdi)"), 4, "rw", kCarryAndZero},
    {"btrl", CODE("btrl $31,(%%rdi)"), 4, "rw", kCarryAndZero},
    {"btcq", CODE("btcq $63,(%%rdi)"), 8, "rw", kCarryAndZero},
    {"lock_orl", CODE("lock orl $0x10,(%%rdi)"), 4, "rw", kAllButAdjust},
    {"xchgb", CODE("xchgb %%cl,(%%rdi)"), 1, "rw"},
    {"xchgw", CODE("xchgw %%cx,(%%rdi)"), 2, "rw"},
    {"xchgl", CODE("xchgl %%ecx,(%%rdi)"), 4, "rw"},
    {"xchgq", CODE("xchgq %%rcx,(%%rdi)"), 8, "rw"},
    {"xaddb", CODE("xaddb %%cl,(%%rdi)"), 1, "rw"},
    {"lock_xaddl", CODE("lock xaddl %%ecx,(%%rdi)"), 4, "rw"},
    {"xaddq", CODE("xaddq %%rcx,(%%rdi)"), 8, "rw"},
    {"cmpxchgb", CODE("cmpxchgb %%cl,(%%rdi)"), 1, "rw"},
    {"lock_cmpxchgl", CODE("lock cmpxchgl %%ecx,(%%rdi)"), 4, "rw"},
    {"cmpxchgq", CODE("cmpxchgq %%rcx,(%%rdi)"), 8, "rw"},
};

const Form kConditions[] = {
    CONDITION("o"),  CONDITION("no"), CONDITION("b"),  CONDITION("ae"), CONDITION("e"), CONDITION("ne"),
    CONDITION("be"), CONDITION("a"),  CONDITION("s"),  CONDITION("ns"), CONDITION("p"), CONDITION("np"),
    CONDITION("l"),  CONDITION("ge"), CONDITION("le"), CONDITION("g"),
};

const Form kStrings[] = {
    {"stosb", CODE("stosb"), 1, "w"},
    {"stosw", CODE("stosw"), 2, "w"},
    {"stosl", CODE("stosl"), 4, "w"},
    {"stosq", CODE("stosq"), 8, "w"},
    {"stosl_backwards", CODE("std\n\tstosl"), 4, "w"},
    {"lodsb", CODE("mov %%rdi,%%rsi\n\tlodsb\n\tsub %%rdi,%%rsi"), 1, "r", 0},
    {"lodsw", CODE("mov %%rdi,%%rsi\n\tlodsw\n\tsub %%rdi,%%rsi"), 2, "r", 0},
    {"lodsl", CODE("mov %%rdi,%%rsi\n\tlodsl\n\tsub %%rdi,%%rsi"), 4, "r", 0},
    {"lodsq", CODE("mov %%rdi,%%rsi\n\tlodsq\n\tsub %%rdi,%%rsi"), 8, "r", 0},
    {"movsb_inside", CODE("mov %%rdi,%%rsi\n\tmovsb\n\tsub %%rdi,%%rsi"), 1, "rw", 0},
    {"movsl_inside", CODE("mov %%rdi,%%rsi\n\tmovsl\n\tsub %%rdi,%%rsi"), 4, "rw", 0},
    {"movsq_inside", CODE("mov %%rdi,%%rsi\n\tmovsq\n\tsub %%rdi,%%rsi"), 8, "rw", 0},
};

const Form kVectors[] = {
    {"movd_load", SSE_CODE("movd (%%rdi),%%xmm0"), 4, "r"},
    {"movq_load", SSE_CODE("movq (%%rdi),%%xmm0"), 8, "r"},
    {"movss_load", SSE_CODE("movss (%%rdi),%%xmm0"), 4, "r"},
    {"movsd_load", SSE_CODE("movsd (%%rdi),%%xmm0"), 8, "r"},
    {"movaps_load", SSE_CODE("movaps (%%rdi),%%xmm0"), 16, "r"},
    {"movupd_load", SSE_CODE("movupd (%%rdi),%%xmm0"), 16, "r"},
    {"movdqa_load", SSE_CODE("movdqa (%%rdi),%%xmm0"), 16, "r"},
    {"movdqu_load", SSE_CODE("movdqu (%%rdi),%%xmm0"), 16, "r"},
    {"lddqu_load", SSE_CODE("lddqu (%%rdi),%%xmm0"), 16, "r"},
    {"movntdqa_load", SSE_CODE("movntdqa (%%rdi),%%xmm0"), 16, "r"},
    {"movlps_load_keeps_the_upper_half", SSE_CODE("movlps (%%rdi),%%xmm0"), 8, "r"},
    {"movhps_load_keeps_the_lower_half", SSE_CODE("movhps (%%rdi),%%xmm0"), 8, "r"},
    {"movhpd_load_keeps_the_lower_half", SSE_CODE("movhpd (%%rdi),%%xmm0"), 8, "r"},
    {"movd_store", SSE_CODE("movd %%xmm0,(%%rdi)"), 4, "w"},
    {"movq_store", SSE_CODE("movq %%xmm0,(%%rdi)"), 8, "w"},
    {"movss_store", SSE_CODE("movss %%xmm0,(%%rdi)"), 4, "w"},
    {"movsd_store", SSE_CODE("movsd %%xmm0,(%%rdi)"), 8, "w"},
    {"movups_store", SSE_CODE("movups %%xmm0,(%%rdi)"), 16, "w"},
    {"movapd_store", SSE_CODE("movapd %%xmm0,(%%rdi)"), 16, "w"},
    {"movdqu_store", SSE_CODE("movdqu %%xmm0,(%%rdi)"), 16, "w"},
    {"movntdq_store", SSE_CODE("movntdq %%xmm0,(%%rdi)"), 16, "w"},
    {"movntps_store", SSE_CODE("movntps %%xmm0,(%%rdi)"), 16, "w"},
    {"movlps_store", SSE_CODE("movlps %%xmm0,(%%rdi)"), 8, "w"},
    {"movhps_store", SSE_CODE("movhps %%xmm0,(%%rdi)"), 8, "w"},
    {"movdqu_load_keeps_what_is_above", AVX_CODE("movdqu (%%rdi),%%xmm0"), 16, "r", kAll, true},
    {"vmovd_load_clears_what_is_above", AVX_CODE("vmovd (%%rdi),%%xmm0"), 4, "r", kAll, true},
    {"vmovq_load_clears_what_is_above", AVX_CODE("vmovq (%%rdi),%%xmm0"), 8, "r", kAll, true},
    {"vmovss_load", AVX_CODE("vmovss (%%rdi),%%xmm0"), 4, "r", kAll, true},
    {"vmovsd_load", AVX_CODE("vmovsd (%%rdi),%%xmm0"), 8, "r", kAll, true},
    {"vmovups_load_clears_what_is_above", AVX_CODE("vmovups (%%rdi),%%xmm0"), 16, "r", kAll, true},
    {"vmovdqu_load", AVX_CODE("vmovdqu (%%rdi),%%ymm0"), 32, "r", kAll, true},
    {"vmovdqa_load", AVX_CODE("vmovdqa (%%rdi),%%ymm0"), 32, "r", kAll, true},
    {"vmovdqu_load_after_zeroing_all_upper_halves", AVX_CODE("vzeroall\n\tvmovdqu (%%rdi),%%ymm0"), 32, "r",
     kAll, true},
    {"vmovdqu_store_after_zeroing_all_upper_halves", AVX_CODE("vzeroupper\n\tvmovdqu %%ymm0,(%%rdi)"), 32,
     "w", kAll, true},
    {"vmovdqu_store", AVX_CODE("vmovdqu %%ymm0,(%%rdi)"), 32, "w", kAll, true},
    {"vmovaps_store", AVX_CODE("vmovaps %%ymm0,(%%rdi)"), 32, "w", kAll, true},
    {"vmovntdq_store", AVX_CODE("vmovntdq %%ymm0,(%%rdi)"), 32, "w", kAll, true},
    {"vmovd_store", AVX_CODE("vmovd %%xmm0,(%%rdi)"), 4, "w", kAll, true},
    {"vmovq_store", AVX_CODE("vmovq %%xmm0,(%%rdi)"), 8, "w", kAll, true},
    {"vmovups_store", AVX_CODE("vmovups %%xmm0,(%%rdi)"), 16, "w", kAll, true},
};

constexpr std::uint64_t kValues[] = {0,
                                     1,
                                     2,
                                     0x0F,
                                     0x7F,
                                     0x80,
                                     0xFF,
                                     0x7FFF,
                                     0x8000,
                                     0xFFFF,
                                     0x7FFFFFFF,
                                     0x80000000,
                                     0xFFFFFFFF,
                                     0x7FFFFFFFFFFFFFFF,
                                     0x8000000000000000,
                                     0xFFFFFFFFFFFFFFFF,
                                     0x0123456789ABCDEF};
constexpr std::uint64_t kFlagSets[] = {0, kCarry, kZero | kSign | kParity, kAll};

constexpr std::size_t kOffset = 0x40;
constexpr std::uint64_t kRest = 0xA5C3'1187'F00D'2BAD;  ///< in memory above the first eight bytes

/// What one run leaves, with rdi as a difference, so that two runs at different places compare.
struct Result {
    Machine machine;
    std::array<std::uint64_t, 4> memory{};
};

Machine startState(const Form& form, std::uint64_t rax, std::uint64_t rcx, std::uint64_t flags) {
    Machine machine;
    machine.rax = rax;
    machine.rcx = rcx;
    machine.rdx = 0xDDDD'DDDD'DDDD'DDDD;
    machine.rsi = 0x5151'5151'5151'5151;
    machine.flags = 0x202 | flags;
    for (std::size_t i = 0; i < machine.vector.size(); ++i) {
        machine.vector[i] = static_cast<std::uint8_t>(rcx + 17 * i + form.width);
    }
    return machine;
}

Result runOnMemory(const Form& form, Machine machine, std::uint64_t value) {
    Result result;
    alignas(64) std::array<std::uint64_t, 4> memory{value, kRest, ~kRest, value};
    machine.rdi = reinterpret_cast<std::uint64_t>(memory.data());
    form.code(machine);
    result.machine = machine;
    result.machine.rdi -= reinterpret_cast<std::uint64_t>(memory.data());
    result.memory = memory;
    return result;
}

Result runOnWindow(const Form& form, Machine machine, std::uint64_t value, RegisterWindow& window) {
    Result result;
    const std::array<std::uint64_t, 4> memory{value, kRest, ~kRest, value};
    for (std::size_t i = 0; i < memory.size(); ++i) {
        window.set(kOffset + 8 * i, memory[i]);
    }
    machine.rdi = reinterpret_cast<std::uint64_t>(window.address(kOffset));
    form.code(machine);
    result.machine = machine;
    result.machine.rdi -= reinterpret_cast<std::uint64_t>(window.address(kOffset));
    for (std::size_t i = 0; i < memory.size(); ++i) {
        result.memory[i] = window.get<std::uint64_t>(kOffset + 8 * i);
    }
    return result;
}

class EmulatedInstruction : public testing::TestWithParam<Form> {
protected:
    void expectSame(const Result& expected, const Result& actual) const {
        EXPECT_EQ(actual.machine.rax, expected.machine.rax);
        EXPECT_EQ(actual.machine.rcx, expected.machine.rcx);
        EXPECT_EQ(actual.machine.rdx, expected.machine.rdx);
        EXPECT_EQ(actual.machine.rsi, expected.machine.rsi);
        EXPECT_EQ(actual.machine.rdi, expected.machine.rdi);
        EXPECT_EQ(actual.machine.flags & GetParam().definedFlags,
                  expected.machine.flags & GetParam().definedFlags);
        EXPECT_EQ(actual.machine.flags & ~kAll, expected.machine.flags & ~kAll) << "other flags have changed";
        EXPECT_EQ(actual.machine.vector, expected.machine.vector);
        EXPECT_EQ(actual.memory, expected.memory);
    }

    std::vector<support::AccessMatcher> expectedAccesses() const {
        std::vector<support::AccessMatcher> result;
        for (const char direction : std::string(GetParam().accesses)) {
            result.push_back(direction == 'r' ? support::Read(GetParam().width, kOffset)
                                              : support::Write(GetParam().width, kOffset));
        }
        return result;
    }

    RegisterWindow window_{0x1000};
};

TEST_P(EmulatedInstruction, DoesWhatTheProcessorDoes) {
    const Form& form = GetParam();
    for (const std::uint64_t value : kValues) {
        for (const std::uint64_t rcx : kValues) {
            for (const std::uint64_t flags : kFlagSets) {
                const Machine start = startState(form, value ^ (rcx & 1), rcx, flags);
                const Result expected = runOnMemory(form, start, value);
                const Result actual = runOnWindow(form, start, value, window_);
                expectSame(expected, actual);
                ASSERT_THAT(window_.accesses(), testing::ElementsAreArray(expectedAccesses()));
                window_.clearAccesses();
                ASSERT_FALSE(HasFailure())
                    << std::hex << "memory 0x" << value << ", rcx 0x" << rcx << ", flags 0x" << flags;
            }
        }
    }
}

std::vector<Form> vectorFormsOfThisProcessor() {
    std::vector<Form> result;
    std::ranges::copy_if(kVectors, std::back_inserter(result),
                         [](const Form& form) { return !form.needsAvx || __builtin_cpu_supports("avx2"); });
    return result;
}

std::string nameOf(const testing::TestParamInfo<Form>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Move, EmulatedInstruction, testing::ValuesIn(kMoves), nameOf);
INSTANTIATE_TEST_SUITE_P(Arithmetic, EmulatedInstruction, testing::ValuesIn(kArithmetic), nameOf);
INSTANTIATE_TEST_SUITE_P(Condition, EmulatedInstruction, testing::ValuesIn(kConditions), nameOf);
INSTANTIATE_TEST_SUITE_P(String, EmulatedInstruction, testing::ValuesIn(kStrings), nameOf);
INSTANTIATE_TEST_SUITE_P(Vector, EmulatedInstruction, testing::ValuesIn(vectorFormsOfThisProcessor()),
                         nameOf);

}  // namespace

}  // namespace registertrap
