#include "Vl/HAL/Fpga/FPGAInterface.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"

namespace {

using Valen::HAL::FPGAInterface;

constexpr std::size_t kFileSize = 0x2000;

class FPGAInterfaceTest : public BoardWorld {
protected:
    /// A register space in which the word at `address` is `letter` four times.
    static void writeNode(const std::string& path, std::size_t address = 0, char letter = 'A') {
        std::string registers(kFileSize, '\0');
        registers.replace(address, 4, std::string(4, letter));
        support::PrivateWorld::write(path, registers);
    }

    static int mappingsOf(const std::string& path) {
        std::ifstream maps("/proc/self/maps");
        int count = 0;
        for (std::string line; std::getline(maps, line);) {
            count += line.find(path) != std::string::npos ? 1 : 0;
        }
        return count;
    }

    FPGAInterface fpga;
};

TEST_F(FPGAInterfaceTest, KnowsTheNameOfItsDevice) {
    EXPECT_STREQ("fpga", FPGAInterface::device);
}

TEST_F(FPGAInterfaceTest, MapsTheWholeNode) {
    writeNode("/dev/fpga", kFileSize - 4);
    ASSERT_TRUE(fpga.openDevice());
    EXPECT_EQ(kFileSize / 4, fpga.words(0).size());
    EXPECT_EQ(0x41414141U, fpga.words(kFileSize - 4).front());
}

TEST_F(FPGAInterfaceTest, WritesReachTheNode) {
    writeNode("/dev/fpga");
    ASSERT_TRUE(fpga.openDevice());
    fpga.words(8).front() = 0x42424242;
    EXPECT_EQ("BBBB", world.read("/dev/fpga").substr(8, 4));
}

TEST_F(FPGAInterfaceTest, WordsIgnoreTheLowAddressBitsAndEndWithTheNode) {
    writeNode("/dev/fpga");
    ASSERT_TRUE(fpga.openDevice());
    EXPECT_EQ(fpga.words(0x10).data(), fpga.words(0x13).data());
    EXPECT_EQ(1U, fpga.words(kFileSize - 1).size());
    EXPECT_TRUE(fpga.words(kFileSize).empty());
    EXPECT_TRUE(fpga.words(0xFFFFFFFF).empty());
}

TEST_F(FPGAInterfaceTest, AWordThatIsNotWhollyInsideIsOutside) {
    support::PrivateWorld::write("/dev/fpga", "123456");
    ASSERT_TRUE(fpga.openDevice());
    EXPECT_EQ(1U, fpga.words(0).size());
    EXPECT_TRUE(fpga.words(4).empty());
}

TEST_F(FPGAInterfaceTest, SimulationOpensTheNodeBelowTmp) {
    writeNode("/dev/fpga", 0, 'D');
    writeNode("/tmp/fpga", 0, 'T');
    fpga.setSimulation(true);
    ASSERT_TRUE(fpga.openDevice());
    EXPECT_EQ(0x54545454U, fpga.words(0).front());
}

TEST_F(FPGAInterfaceTest, AMissingNodeFails) {
    EXPECT_FALSE(fpga.openDevice());
    EXPECT_TRUE(fpga.words(0).empty());
}

TEST_F(FPGAInterfaceTest, BeforeOpeningThereAreNoWords) {
    EXPECT_TRUE(fpga.words(0).empty());
    EXPECT_EQ(nullptr, fpga.centralSync());
}

TEST_F(FPGAInterfaceTest, AFailedMappingOpensAllTheSameButHasNoWords) {
    support::PrivateWorld::write("/dev/fpga", "");
    EXPECT_TRUE(fpga.openDevice());
    EXPECT_TRUE(fpga.words(0).empty());
}

TEST_F(FPGAInterfaceTest, ANodeWithoutALengthOpensAllTheSameButHasNoWords) {
    ASSERT_EQ(0, mkfifo("/dev/fpga", 0600));
    EXPECT_TRUE(fpga.openDevice());
    EXPECT_TRUE(fpga.words(0).empty());
}

TEST_F(FPGAInterfaceTest, TheNodeIsClosedOnExecAndAtTheEnd) {
    writeNode("/dev/fpga");
    std::optional<FPGAInterface> local(std::in_place);
    const int next = dup(0);
    close(next);
    ASSERT_TRUE(local->openDevice());
    EXPECT_EQ(FD_CLOEXEC, fcntl(next, F_GETFD));
    EXPECT_EQ(1, descriptorsOn("/dev/fpga"));
    local.reset();
    EXPECT_EQ(0, descriptorsOn("/dev/fpga"));
}

TEST_F(FPGAInterfaceTest, NeverOpenedItClosesNothing) {
    std::optional<FPGAInterface> local(std::in_place);
    local.reset();
    EXPECT_GE(fcntl(0, F_GETFD), 0);
}

TEST_F(FPGAInterfaceTest, RegistersStayMappedAfterTheEndOnPurpose) {
    writeNode("/dev/fpga");
    std::optional<FPGAInterface> local(std::in_place);
    ASSERT_TRUE(local->openDevice());
    volatile std::uint32_t* registers = local->words(0).data();
    const int mapped = mappingsOf("/dev/fpga");
    local.reset();
    EXPECT_EQ(mapped, mappingsOf("/dev/fpga"));
    EXPECT_EQ(0x41414141U, *registers);
}

TEST_F(FPGAInterfaceTest, OpeningAgainTakesTheNodeThatIsThereNow) {
    writeNode("/dev/fpga", 0, 'A');
    ASSERT_TRUE(fpga.openDevice());
    std::filesystem::remove("/dev/fpga");
    writeNode("/dev/fpga", 0, 'B');
    ASSERT_TRUE(fpga.openDevice());
    EXPECT_EQ(0x42424242U, fpga.words(0).front());
    EXPECT_EQ(1, descriptorsOn("/dev/fpga"));
    EXPECT_EQ(0, descriptorsOn("/dev/fpga (deleted)"));
    std::filesystem::remove("/dev/fpga");
    EXPECT_FALSE(fpga.openDevice());
    EXPECT_TRUE(fpga.words(0).empty());
}

TEST_F(FPGAInterfaceTest, TheSyncBlockIsTheFirstCoreWhoseNameEndsSo) {
    writeNode("/dev/fpga", 0x1000);
    writeLayout("fpga", core("x", {1, 0x40}) + core("base_central_sync", {1, 0x103F}) +
                            core("central_sync", {1, 0x80}));
    ASSERT_TRUE(fpga.openDevice());
    EXPECT_TRUE(fpga.loadCoreAddresses());
    EXPECT_EQ(fpga.words(0x1000).data(), fpga.centralSync());
}

TEST_F(FPGAInterfaceTest, WithoutASyncCoreThereIsNoSyncBlock) {
    writeNode("/dev/fpga");
    ASSERT_TRUE(fpga.openDevice());
    EXPECT_FALSE(fpga.loadCoreAddresses());
    writeLayout("fpga", core("central_sync2", {1, 0x40}));
    EXPECT_FALSE(fpga.loadCoreAddresses());
    EXPECT_EQ(nullptr, fpga.centralSync());
}

TEST_F(FPGAInterfaceTest, ASyncBlockOutsideTheMappedRegistersIsNone) {
    writeNode("/dev/fpga");
    writeLayout("fpga", core("central_sync", {1, kFileSize}));
    ASSERT_TRUE(fpga.openDevice());
    EXPECT_FALSE(fpga.loadCoreAddresses());
    EXPECT_EQ(nullptr, fpga.centralSync());
}

TEST_F(FPGAInterfaceTest, WithoutMappedRegistersThereIsNoSyncBlock) {
    writeLayout("fpga", core("central_sync", {1, 0x40}));
    EXPECT_FALSE(fpga.loadCoreAddresses());
    EXPECT_EQ(nullptr, fpga.centralSync());
}

}  // namespace
