#include "Tools/boardsim/Board/RomModel.h"

#include <gmock/gmock.h>

#include <array>
#include <stdexcept>

namespace {

using boardsim::parseFault;
using testing::ElementsAre;
using testing::HasSubstr;

boardsim::RomPart part() {
    boardsim::RomPart rom;
    rom.start[0] = 0xEA;
    rom.macs = {{{2, 0, 0x5E, 1, 2, 3}, {2, 0, 0x5E, 1, 2, 4}}};
    rom.version = {0x80010203, 0x2F6E0007, 0xC0010002};
    rom.serial = {0x0102030405060708, 0x11121314, -1};
    return rom;
}

class RomModelTest : public testing::Test {
protected:
    boardsim::Transfer read(std::uint64_t offset, std::span<std::byte> into) {
        return rom.device().open().read(offset, into);
    }
    std::string complaintAbout(const std::string& fault) {
        try {
            rom.apply(parseFault(fault));
        } catch (const std::invalid_argument& refusal) {
            return refusal.what();
        }
        return {};
    }

    std::vector<std::string> told;
    boardsim::RomModel rom{part(), [this](const std::string& line) { told.push_back(line); }};
    std::array<std::byte, 57> bytes{};
};

TEST_F(RomModelTest, EveryFieldHasItsPlaceWithItsLowByteFirst) {
    EXPECT_THAT(boardsim::encodeRom(part()),
                ElementsAre(0xEA, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  //
                            2, 0, 0x5E, 1, 2, 3, 2, 0, 0x5E, 1, 2, 4,           //
                            3, 2, 1, 0x80, 7, 0, 0x6E, 0x2F, 2, 0, 1, 0xC0,     //
                            8, 7, 6, 5, 4, 3, 2, 1, 0x14, 0x13, 0x12, 0x11, 0xFF, 0xFF, 0xFF, 0xFF));
}

TEST_F(RomModelTest, IsADeviceWhoseAccessesAreTold) {
    EXPECT_EQ("/dev/bootrom", rom.device().path);
    EXPECT_EQ(57U, read(0, bytes).count);
    EXPECT_EQ(std::byte{0x80}, bytes[31]);
    EXPECT_EQ(std::byte{0xFF}, bytes[56]);
    rom.device().open().write(28, std::array{std::byte{9}});
    EXPECT_EQ(1U, read(28, std::span(bytes).first(1)).count);
    EXPECT_EQ(std::byte{9}, bytes[0]);
    EXPECT_THAT(told, ElementsAre("rom read 57 bytes at 0", "rom write 0x09 at 28", "rom read 1 byte at 28"));
}

TEST_F(RomModelTest, MisbehavesOnDemand) {
    rom.apply(parseFault("rom:bootrom:fail:times=1"));
    EXPECT_EQ(std::errc::io_error, read(0, bytes).error);
    rom.apply(parseFault("rom:bootrom:corrupt=0x1F"));
    read(0, bytes);
    EXPECT_EQ(std::byte{0x7F}, bytes[31]);
    rom.apply(parseFault("rom:bootrom:short-read"));
    EXPECT_EQ(28U, read(0, std::span(bytes).first(56)).count);
    rom.apply(parseFault("rom:bootrom:short-write"));
    EXPECT_EQ(6U, rom.device().open().write(28, std::span(bytes).first(12)).count);
}

TEST_F(RomModelTest, FaultsThatCannotBeAreRefused) {
    EXPECT_THAT(complaintAbout("rom:flash:fail"), HasSubstr("there is bootrom"));
    EXPECT_THAT(complaintAbout("rom:bootrom:burn"), HasSubstr("there are fail, short-read"));
    EXPECT_THAT(complaintAbout("rom:bootrom:fail=1"), HasSubstr("fail has no value"));
    EXPECT_THAT(complaintAbout("rom:bootrom:corrupt"), HasSubstr("from 0 to 65535"));
    EXPECT_THAT(complaintAbout("rom:bootrom:corrupt=65536"), HasSubstr("from 0 to 65535"));
}

}  // namespace
