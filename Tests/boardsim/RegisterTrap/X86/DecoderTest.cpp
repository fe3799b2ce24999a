#include "Tools/boardsim/Host/RegisterTrap/X86/Decoder.h"

#include <gmock/gmock.h>
#include <sys/mman.h>

#include <cstring>
#include <initializer_list>

namespace registertrap {

namespace {

using boardsim::X86::Form;
using boardsim::X86::Instruction;

constexpr std::size_t kPage = 4096;

class DecoderTest : public testing::Test {
protected:
    DecoderTest() { EXPECT_TRUE(decoder_.open()); }
    ~DecoderTest() override { ::munmap(code_, 2 * kPage); }

    const Instruction* decode(std::size_t offset, std::initializer_list<std::uint8_t> bytes) {
        std::memcpy(code_ + offset, bytes.begin(), bytes.size());
        return decoder_.decode(reinterpret_cast<std::uint64_t>(code_ + offset));
    }

    // Like the one in the trap it is never destroyed.
    static inline boardsim::X86::Decoder decoder_;
    std::byte* code_ = static_cast<std::byte*>(
        ::mmap(nullptr, 2 * kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
};

TEST_F(DecoderTest, NoticesThatOtherCodeHasComeToTheSameAddress) {
    const Instruction* load = decode(0, {0x8B, 0x07});  // mov eax, [rdi]
    ASSERT_TRUE(load);
    EXPECT_EQ(load->operands[0].number, 0);

    const Instruction* other = decode(0, {0x8B, 0x0F});  // mov ecx, [rdi]

    ASSERT_TRUE(other);
    EXPECT_EQ(other->operands[0].number, 1);
}

TEST_F(DecoderTest, NoticesThatAnUnknownInstructionHasComeToTheSameAddress) {
    ASSERT_TRUE(decode(0, {0x8B, 0x07}));  // mov eax, [rdi]

    EXPECT_FALSE(decode(0, {0xDD, 0x07}));  // fld qword ptr [rdi]
    EXPECT_TRUE(decode(0, {0x8B, 0x07}));
}

TEST_F(DecoderTest, ReadsNothingBehindAnInstructionAtTheEndOfAPage) {
    ASSERT_EQ(::mprotect(code_ + kPage, kPage, PROT_NONE), 0);

    EXPECT_TRUE(decode(kPage - 2, {0x8B, 0x07}));
}

TEST_F(DecoderTest, DecodesAnInstructionThatReachesIntoTheNextPage) {
    const Instruction* store = decode(kPage - 3, {0xC7, 0x47, 0x04, 0x78, 0x56, 0x34, 0x12});

    ASSERT_TRUE(store);  // mov dword ptr [rdi + 4], 0x12345678
    EXPECT_EQ(store->length, 7);
    EXPECT_EQ(store->operands[1].immediate, 0x12345678U);
}

TEST_F(DecoderTest, TellsTheStringInstructionFromTheVectorInstructionOfTheSameName) {
    const Instruction* string = decode(0, {0xA5});  // movsd dword ptr [rdi], dword ptr [rsi]
    ASSERT_TRUE(string);
    EXPECT_EQ(string->form, Form::StringMove);

    const Instruction* vector = decode(16, {0xF2, 0x0F, 0x10, 0x07});  // movsd xmm0, qword ptr [rdi]
    ASSERT_TRUE(vector);
    EXPECT_EQ(vector->form, Form::VectorMove);
}

TEST_F(DecoderTest, RefusesWhatItCannotEmulate) {
    EXPECT_FALSE(decode(0, {0x64, 0x8B, 0x07}));                    // mov eax, fs:[rdi]
    EXPECT_FALSE(decode(0, {0x67, 0x8B, 0x07}));                    // mov eax, [edi]
    EXPECT_FALSE(decode(0, {0xFF, 0x37}));                          // push [rdi]
    EXPECT_FALSE(decode(0, {0xC5, 0xF8, 0x16, 0x07}));              // vmovhps xmm0, xmm0, [rdi]
    EXPECT_FALSE(decode(0, {0x62, 0xF1, 0xFE, 0x29, 0x6F, 0x07}));  // vmovdqu64 ymm0 {k1}, [rdi]
    EXPECT_FALSE(decode(0, {0x89, 0xC8}));                          // mov eax, ecx
    EXPECT_FALSE(decode(0, {0x06}));                                // none in 64-bit mode
}

TEST_F(DecoderTest, FoldsTheInstructionPointerIntoTheAddress) {
    const Instruction* load = decode(0, {0x8B, 0x05, 0x10, 0x00, 0x00, 0x00});  // mov eax, [rip + 0x10]

    ASSERT_TRUE(load);
    EXPECT_EQ(load->operands[1].base, -1);
    EXPECT_EQ(static_cast<std::uint64_t>(load->operands[1].displacement),
              reinterpret_cast<std::uint64_t>(code_) + 6 + 0x10);
}

}  // namespace

}  // namespace registertrap
