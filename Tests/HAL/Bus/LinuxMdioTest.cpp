#include "Vl/HAL/Bus/LinuxMdio.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Tests/HAL/Bus/MiiCalls.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::LinuxMdio;

// linux/sockios.h
constexpr unsigned long kGetPhy = 0x8947;
constexpr unsigned long kGetRegister = 0x8948;
constexpr unsigned long kSetRegister = 0x8949;

class LinuxMdioTest : public testing::Test {
protected:
    LinuxMdioTest() { mdio.Init(socket, 1, 5); }
    ~LinuxMdioTest() override { close(socket); }

    const int socket = LinuxMdio::createSocket();
    MiiCalls driver{socket};
    LinuxMdio mdio;
};

TEST_F(LinuxMdioTest, TheSocketIsAnInternetDatagramSocketClosedOnExec) {
    ASSERT_GE(socket, 0);
    int domain = 0;
    int type = 0;
    socklen_t size = sizeof domain;
    ASSERT_EQ(0, getsockopt(socket, SOL_SOCKET, SO_DOMAIN, &domain, &size));
    ASSERT_EQ(0, getsockopt(socket, SOL_SOCKET, SO_TYPE, &type, &size));
    EXPECT_EQ(AF_INET, domain);
    EXPECT_EQ(SOCK_DGRAM, type);
    EXPECT_EQ(FD_CLOEXEC, fcntl(socket, F_GETFD));
}

TEST_F(LinuxMdioTest, AWriteAsksForThePhyAndThenSetsTheRegisterOfTheStoredOne) {
    EXPECT_TRUE(mdio.setReg(4, 0x01E1));
    EXPECT_THAT(driver.calls,
                ElementsAre(MiiCall{kGetPhy, "eth1", 0, 0, 0}, MiiCall{kSetRegister, "eth1", 5, 4, 0x01E1}));
}

TEST_F(LinuxMdioTest, AReadAsksForThePhyAndThenForTheRegisterOfTheStoredOne) {
    driver.answer = 0xFFFF;
    EXPECT_EQ(0xFFFF, mdio.getReg(17));
    EXPECT_THAT(driver.calls,
                ElementsAre(MiiCall{kGetPhy, "eth1", 0, 0, 0}, MiiCall{kGetRegister, "eth1", 5, 17, 0}));
}

TEST_F(LinuxMdioTest, AnotherPhyAddressCountsFromThenOn) {
    mdio.changePhyAddress(9);
    mdio.getReg(2);
    ASSERT_EQ(2U, driver.calls.size());
    EXPECT_EQ((MiiCall{kGetRegister, "eth1", 9, 2, 0}), driver.calls[1]);
}

TEST_F(LinuxMdioTest, InitTakesAnyInterface) {
    mdio.Init(socket, 2147483647, 3);
    mdio.setReg(0, 0x8000);
    ASSERT_EQ(2U, driver.calls.size());
    EXPECT_EQ((MiiCall{kSetRegister, "eth2147483647", 3, 0, 0x8000}), driver.calls[1]);
}

TEST_F(LinuxMdioTest, WithoutAnAnswerAboutThePhyNothingElseIsAsked) {
    driver.failing = kGetPhy;
    EXPECT_FALSE(mdio.setReg(4, 1));
    EXPECT_EQ(-1, mdio.getReg(4));
    EXPECT_THAT(driver.calls,
                ElementsAre(MiiCall{kGetPhy, "eth1", 0, 0, 0}, MiiCall{kGetPhy, "eth1", 0, 0, 0}));
}

TEST_F(LinuxMdioTest, ARefusedWriteFails) {
    driver.failing = kSetRegister;
    EXPECT_FALSE(mdio.setReg(4, 1));
}

TEST_F(LinuxMdioTest, ARefusedReadIsMinusOneWhateverTheDriverLeaves) {
    driver.answer = 7;
    driver.failing = kGetRegister;
    EXPECT_EQ(-1, mdio.getReg(4));
}

TEST_F(LinuxMdioTest, BeforeInitEveryAccessFails) {
    LinuxMdio unready;
    EXPECT_FALSE(unready.setReg(0, 0));
    EXPECT_EQ(-1, unready.getReg(0));
    EXPECT_THAT(driver.calls, IsEmpty());
}

TEST_F(LinuxMdioTest, TheSocketStaysOpenAtTheEnd) {
    { LinuxMdio other = mdio; }
    EXPECT_GE(fcntl(socket, F_GETFD), 0);
}

}  // namespace
