#include "Vl/Common/Enums/UpdatePackage.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

// Written down once more, so that a slip in the table shows.
const std::map<int, std::string> kTexts = {{0, "Unknown"},       {1, "MCFirmware"}, {2, "PPCFirmware"},
                                           {3, "FPGA"},          {4, "Software"},   {5, "VersionFile"},
                                           {6, "UpdateProcess"}, {7, "FPGA_NAND"}};

TEST(UpdatePackageTest, TextsLeadToValuesAndBack) {
    expectExactly(ENUMERATION(UpdatePackage), kTexts);
}

TEST(UpdatePackageTest, NumbersWithoutATextReadUnknown) {
    expectOthersUnknown(ENUMERATION(UpdatePackage), kTexts);
}

TEST(UpdatePackageTest, CaseMatters) {
    EXPECT_EQ(3, Enums::UpdatePackage::GetType("FPGA"));
    EXPECT_EQ(-1, Enums::UpdatePackage::GetType("fpga"));
}

TEST(UpdatePackageTest, UnknownWithACapitalIsAPackage) {
    EXPECT_EQ(0, Enums::UpdatePackage::GetType("Unknown"));
    EXPECT_EQ(-1, Enums::UpdatePackage::GetType("unknown"));
}

TEST(UpdatePackageTest, ThereAreEight) {
    EXPECT_EQ(8, Enums::UpdatePackage::Size());
}

}  // namespace
