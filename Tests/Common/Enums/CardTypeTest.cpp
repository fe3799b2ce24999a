#include "Vl/Common/Enums/CardType.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// Written down once more, so that a slip in the table shows.
const std::map<int, std::string> kTexts = {
    {0, "Undefined"},    {1, "ControlCard"},      {2, "FanUnit"},          {3, "Backplane"},
    {4, "OLEDUnit"},     {5, "LEDFront"},         {6, "GPIOCard"},         {7, "AIOCard"},
    {8, "LinkCard"},     {9, "CWDMCard"},         {16, "MADICard"},        {17, "QuarionCard"},
    {18, "TestAdapter"}, {119, "Evalboard"},      {128, "ProcessingCard"}, {144, "SD_SDICard"},
    {145, "HD_SDICard"}, {146, "HD3G_SDICard"},   {147, "DVICard"},        {148, "DPCard"},
    {149, "CameraCard"}, {160, "MIOCard"},        {161, "AlinkCard"},      {176, "EthernetCard"},
    {221, "DEBUGCard"},  {247, "Evalboard_FPGA"}, {252, "uControllerFW"},  {253, "PPC_FW"},
    {254, "PCSoftware"}, {255, "NoCard"}};

TEST(CardTypeTest, TextsLeadToValuesAndBack) {
    expectExactly(ENUMERATION(CardType), kTexts);
}

TEST(CardTypeTest, NumbersWithoutATextReadUnknown) {
    expectOthersUnknown(ENUMERATION(CardType), kTexts);
}

TEST(CardTypeTest, TenIsAGap) {
    EXPECT_FALSE(Enums::CardType::IsValidNum(10));
}

TEST(CardTypeTest, TheHighestByteIsNoCard) {
    EXPECT_STREQ("NoCard", GetText(static_cast<Enums::CardType::Type>(255)));
    EXPECT_EQ(256, Enums::CardType::Size());
}

}  // namespace
