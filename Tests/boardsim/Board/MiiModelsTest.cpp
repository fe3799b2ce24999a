#include "Tools/boardsim/Board/MiiModels.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace {

using boardsim::IoctlAnswer;
using boardsim::MiiModels;
using boardsim::parseFault;
using boardsim::PhyModel;
using boardsim::SocketRequest;
using testing::ElementsAre;
using testing::HasSubstr;

class MiiModelsTest : public testing::Test {
protected:
    /// The words of the record after a request: address, register, value in, value out.
    std::array<std::uint16_t, 12> words{};

    std::optional<IoctlAnswer> ask(unsigned code, const std::string& interface) {
        SocketRequest request{code, interface, std::as_writable_bytes(std::span(words))};
        return mii.answer(request);
    }
    unsigned read(const std::string& interface, std::uint16_t address, std::uint16_t reg) {
        words = {address, reg};
        EXPECT_EQ(std::errc{}, ask(0x8948, interface)->error);
        return words[3];
    }
    std::string complaint(const std::string& text) {
        try {
            mii.apply(parseFault(text));
        } catch (const std::invalid_argument& refusal) {
            return refusal.what();
        }
        return {};
    }

    std::chrono::steady_clock::time_point now{};
    std::vector<std::string> told;
    MiiModels mii{{{"eth0", {2, PhyModel::Phy88e1510}}, {"eth1", {5, PhyModel::Dp83867}}},
                  [this] { return now; },
                  [this](const std::string& line) { told.push_back(line); }};
};

TEST_F(MiiModelsTest, EveryInterfaceHasItsOwnPhy) {
    EXPECT_EQ(0x0141U, read("eth0", 2, 2));
    EXPECT_EQ(0xFFFFU, read("eth0", 5, 2));
    EXPECT_EQ(0x2000U, read("eth1", 5, 2));
    EXPECT_THAT(
        told, ElementsAre("eth0 mdio read phy 2 reg 2 0x0141", "eth0 mdio read phy 5 reg 2 0xffff, no answer",
                          "eth1 mdio read phy 5 reg 2 0x2000"));
}

TEST_F(MiiModelsTest, OtherInterfacesAndPrivateRequestsAreNobodysHere) {
    EXPECT_FALSE(ask(0x8947, "eth2"));
    EXPECT_FALSE(ask(0x8947, ""));
    EXPECT_FALSE(ask(0x89F0, "eth0"));
    EXPECT_FALSE(ask(0x89FF, "eth1"));
    EXPECT_THAT(told, ElementsAre());
}

TEST_F(MiiModelsTest, ThereMayBeNone) {
    const MiiModels none(
        {}, [] { return std::chrono::steady_clock::time_point(); }, [](const std::string&) {});
    EXPECT_TRUE(none.empty());
    EXPECT_FALSE(mii.empty());
}

TEST_F(MiiModelsTest, APhyThatDoesNotAnswerReadsAsOnes) {
    mii.apply(parseFault("mii:eth1:no-answer:after=1:times=1"));
    EXPECT_EQ(0x2000U, read("eth1", 5, 2));
    EXPECT_EQ(0xFFFFU, read("eth1", 5, 2));
    EXPECT_EQ(0x2000U, read("eth1", 5, 2));
}

TEST_F(MiiModelsTest, ALinkMayBeDown) {
    constexpr unsigned kLinkUp = 0x0004;
    now += std::chrono::seconds(10);
    read("eth0", 2, 1);
    EXPECT_EQ(kLinkUp, read("eth0", 2, 1) & kLinkUp);
    mii.apply(parseFault("mii:eth0:link-down"));
    read("eth0", 2, 1);
    EXPECT_EQ(0U, read("eth0", 2, 1) & kLinkUp);
}

TEST_F(MiiModelsTest, FaultsThatNoInterfaceCanHaveAreRefused) {
    EXPECT_THAT(complaint("mii:eth7:no-answer"), HasSubstr("no interface 'eth7'"));
    EXPECT_THAT(complaint("mii:eth0:on-fire"), HasSubstr("there are no-answer, link-down"));
}

}  // namespace
