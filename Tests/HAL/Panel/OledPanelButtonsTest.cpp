#include "Vl/HAL/Panel/OledPanelButtons.h"

#include <gtest/gtest.h>

namespace {

using Valen::OledPanelButtons;

TEST(OledPanelButtonsTest, StartsWithNothing) {
    const OledPanelButtons buttons;
    EXPECT_EQ(0U, buttons.word);
    EXPECT_FALSE(buttons.any());
}

TEST(OledPanelButtonsTest, IsOneWord) {
    EXPECT_EQ(4U, sizeof(OledPanelButtons));
}

TEST(OledPanelButtonsTest, HoldsThreeBitsForEachButton) {
    EXPECT_EQ(7, OledPanelButtons{0x00070000}.left());
    EXPECT_EQ(0, OledPanelButtons{~0x00070000U}.left());
    EXPECT_EQ(7, OledPanelButtons{0x00380000}.right());
    EXPECT_EQ(0, OledPanelButtons{~0x00380000U}.right());
    EXPECT_EQ(7, OledPanelButtons{0x01C00000}.redPush());
    EXPECT_EQ(0, OledPanelButtons{~0x01C00000U}.redPush());
}

TEST(OledPanelButtonsTest, HoldsTheEncoderAsASignedNumberInTheTopFiveBits) {
    EXPECT_EQ(0, OledPanelButtons{0x07FFFFFF}.encoderSteps());
    EXPECT_EQ(1, OledPanelButtons{0x08000000}.encoderSteps());
    EXPECT_EQ(15, OledPanelButtons{0x78000000}.encoderSteps());
    EXPECT_EQ(-16, OledPanelButtons{0x80000000}.encoderSteps());
    EXPECT_EQ(-1, OledPanelButtons{0xF8000000}.encoderSteps());
}

TEST(OledPanelButtonsTest, AnyFieldIsActivity) {
    for (const std::uint32_t lowest : {0x00010000U, 0x00080000U, 0x00400000U, 0x08000000U, 0x80000000U}) {
        EXPECT_TRUE(OledPanelButtons{lowest}.any()) << lowest;
    }
}

TEST(OledPanelButtonsTest, BitNineCountsAsActivityOnPurpose) {
    EXPECT_TRUE(OledPanelButtons{0x00000200}.any());
}

TEST(OledPanelButtonsTest, TheBitsBesideTheFieldsAreNoActivity) {
    EXPECT_FALSE(OledPanelButtons{0x0600FDFF}.any());
}

}  // namespace
