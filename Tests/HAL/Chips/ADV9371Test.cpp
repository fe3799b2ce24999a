#include "Vl/HAL/Chips/ADV9371.h"

#include <fcntl.h>
#include <unistd.h>

#include <climits>
#include <memory>
#include <string>

#include "Tests/HAL/BoardWorld.h"

namespace {

using Valen::ADV9371;
using Valen::ADVInterface;

constexpr const char* kRegisters = "/tmp/adv_regs";

class ADV9371Test : public BoardWorld {
protected:
    ADV9371Test() {
        std::string bytes;
        for (int reg = 0; reg < 256; ++reg) {
            bytes += static_cast<char>(255 - reg);
        }
        support::PrivateWorld::write(kRegisters, bytes);
    }
};

TEST_F(ADV9371Test, OpensTheRegisterFileForBothAndClosesItAtTheEndAndOnExec) {
    const int next = dup(0);
    close(next);
    std::unique_ptr<ADVInterface> chip = std::make_unique<ADV9371>(kRegisters);
    EXPECT_EQ(1, descriptorsOn(kRegisters));
    EXPECT_EQ(FD_CLOEXEC, fcntl(next, F_GETFD));
    EXPECT_EQ(O_RDWR, fcntl(next, F_GETFL) & O_ACCMODE);
    chip.reset();
    EXPECT_EQ(0, descriptorsOn(kRegisters));
}

TEST_F(ADV9371Test, ARegisterIsTheByteAtItsNumber) {
    ADV9371 chip(kRegisters);
    for (const int reg : {0, 1, 0x7F, 0x80, 0xFF, 3}) {
        EXPECT_EQ(255 - reg, chip.getReg(reg));
    }
}

TEST_F(ADV9371Test, WritesOneByte) {
    ADV9371 chip(kRegisters);
    EXPECT_EQ(1, chip.setReg(0x42, 0xA5));
    EXPECT_EQ(1, chip.setReg(0x40, 0x5A));
    const std::string bytes = support::PrivateWorld::read(kRegisters);
    EXPECT_EQ(256U, bytes.size());
    EXPECT_EQ("\x5A\xBE\xA5\xBC", bytes.substr(0x40, 4));
    EXPECT_EQ(0xA5, chip.getReg(0x42));
}

TEST_F(ADV9371Test, WithoutAFileEveryAccessFails) {
    ADV9371 chip("/tmp/no_such_file");
    EXPECT_EQ(-1, chip.setReg(0, 1));
    EXPECT_EQ(0, chip.getReg(0));
}

TEST_F(ADV9371Test, AReadThatFailsLooksLikeAZeroOnPurpose) {
    ADV9371 chip(kRegisters);
    EXPECT_EQ(0xFF, chip.getReg(0));
    EXPECT_EQ(0, chip.getReg(256));
}

TEST_F(ADV9371Test, NumbersThatAreNoRegistersTouchNoOther) {
    ADV9371 chip(kRegisters);
    const std::string before = support::PrivateWorld::read(kRegisters);
    for (const int reg : {-1, INT_MIN}) {
        EXPECT_EQ(-1, chip.setReg(reg, 1));
        EXPECT_EQ(0, chip.getReg(reg));
    }
    EXPECT_EQ(before, support::PrivateWorld::read(kRegisters));
}

TEST_F(ADV9371Test, ADirectoryIsNoRegisterFile) {
    ADV9371 chip("/tmp");
    EXPECT_EQ(-1, chip.setReg(0, 1));
}

TEST_F(ADV9371Test, NothingIsLogged) {
    logEverything();
    ADV9371 chip("/tmp/no_such_file");
    chip.setReg(0, 1);
    chip.getReg(0);
    EXPECT_THAT(syslog.lines(), testing::IsEmpty());
}

}  // namespace
