#include "Tools/boardinfo/Sections/ReadOnlyMdio.h"

#include <gmock/gmock.h>

namespace {

using boardinfo::sections::ReadOnlyMdio;
using testing::_;
using testing::Return;

class MockMdio : public Valen::HAL::MDIO {
public:
    MOCK_METHOD(bool, setReg, (int reg, int value), (override));
    MOCK_METHOD(int, getReg, (int reg), (override));
    MOCK_METHOD(void, changePhyAddress, (int phyAddress), (override));
};

class ReadOnlyMdioTest : public testing::Test {
protected:
    std::shared_ptr<MockMdio> bus_ = std::make_shared<testing::StrictMock<MockMdio>>();
    ReadOnlyMdio mdio_{bus_};
};

TEST_F(ReadOnlyMdioTest, ReadsAndTurnsToOtherPhys) {
    EXPECT_CALL(*bus_, getReg(17)).WillOnce(Return(0x8000)).WillOnce(Return(-1));
    EXPECT_CALL(*bus_, changePhyAddress(3));
    EXPECT_EQ(0x8000, mdio_.getReg(17));
    EXPECT_EQ(-1, mdio_.getReg(17));
    mdio_.changePhyAddress(3);
}

TEST_F(ReadOnlyMdioTest, NeverWritesEvenWhenADriverWantsTo) {
    EXPECT_CALL(*bus_, setReg(_, _)).Times(0);
    EXPECT_CALL(*bus_, getReg(22)).WillOnce(Return(0)).WillOnce(Return(3)).WillOnce(Return(-1));
    EXPECT_TRUE(mdio_.setReg(22, 0)) << "it is so already";
    EXPECT_FALSE(mdio_.setReg(22, 0)) << "another page is selected";
    EXPECT_FALSE(mdio_.setReg(22, 0xFFFF)) << "it cannot be read";
}

}  // namespace
