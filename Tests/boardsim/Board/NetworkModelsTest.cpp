#include "Tools/boardsim/Board/NetworkModels.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace {

using boardsim::InbandPart;
using boardsim::IoctlAnswer;
using boardsim::ModelTime;
using boardsim::NetworkModels;
using boardsim::parseFault;
using boardsim::PatternPart;
using boardsim::SocketRequest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using namespace std::chrono_literals;

class NetworkModelsTest : public testing::Test {
protected:
    std::optional<IoctlAnswer> ask(unsigned code, const std::string& interface, std::uint32_t argument = 0) {
        std::array<std::byte, 24> data{};
        std::memcpy(data.data(), &argument, sizeof argument);
        return network.answer(SocketRequest{code, interface, data});
    }
    std::errc errorOf(unsigned code, const std::string& interface, std::uint32_t argument = 0) {
        const std::optional<IoctlAnswer> answer = ask(code, interface, argument);
        EXPECT_TRUE(answer);
        return answer ? answer->error : std::errc{};
    }
    std::string complaint(const std::string& text) {
        try {
            network.apply(parseFault(text));
        } catch (const std::invalid_argument& refusal) {
            return refusal.what();
        }
        return {};
    }
    void connect() {
        network.connect([this](const std::string& interface, bool hasCarrier) {
            plugged.emplace_back(interface, hasCarrier);
        });
    }

    std::vector<std::string> told;
    std::vector<std::pair<std::string, bool>> plugged;
    NetworkModels network{{{"eth0", true}, {"inbd", true}, {"pattern", false}},
                          InbandPart{true, "eth0", {120, 35}},
                          PatternPart{false, 4},
                          [this](const std::string& line) { told.push_back(line); }};
};

TEST_F(NetworkModelsTest, LanesAreSwitchedByThePatternInterface) {
    EXPECT_EQ(std::errc{}, errorOf(0x89F0, "pattern", 3));
    EXPECT_EQ(std::errc{}, errorOf(0x89F1, "pattern", 3));
    EXPECT_EQ(std::errc::invalid_argument, errorOf(0x89F0, "pattern", 4));
    EXPECT_THAT(
        told, ElementsAre("pattern lane 3 on", "pattern lane 3 off", "pattern lane 4 on: Invalid argument"));
}

TEST_F(NetworkModelsTest, AFibreLengthIsTheResultOfTheRequest) {
    EXPECT_EQ(120, ask(0x89F6, "inbd", 0)->value);
    EXPECT_EQ(35, ask(0x89F6, "inbd", 1)->value);
    EXPECT_EQ(std::errc::invalid_argument, errorOf(0x89F6, "inbd", 2));
    EXPECT_THAT(told, ElementsAre("inbd fibre length of port 0: 120", "inbd fibre length of port 1: 35",
                                  "inbd fibre length of port 2: Invalid argument"));
}

TEST_F(NetworkModelsTest, TheLinkShutsDown) {
    EXPECT_EQ(std::errc{}, errorOf(0x89F3, "inbd"));
    EXPECT_THAT(told, ElementsAre("inbd emergency shutdown"));
}

TEST_F(NetworkModelsTest, WhatADriverDoesNotKnowIsTheKernels) {
    EXPECT_FALSE(ask(0x89F0, "inbd"));
    EXPECT_FALSE(ask(0x89F3, "pattern"));
    EXPECT_FALSE(ask(0x89F6, "pattern"));
    EXPECT_FALSE(ask(0x89F0, "eth0"));
    EXPECT_FALSE(ask(0x89F3, "nope"));
    EXPECT_FALSE(ask(0x8947, "inbd"));
    EXPECT_THAT(told, ElementsAre());
}

TEST_F(NetworkModelsTest, WhatTheBoardLacksIsTheKernels) {
    NetworkModels none({{"eth0", true}}, {}, {}, [](const std::string&) {});
    EXPECT_FALSE(none.answersRequests());
    std::array<std::byte, 24> data{};
    EXPECT_FALSE(none.answer(SocketRequest{0x89F3, "inbd", data}));
    EXPECT_FALSE(none.answer(SocketRequest{0x89F0, "pattern", data}));
    EXPECT_TRUE(network.answersRequests());
}

TEST_F(NetworkModelsTest, RequestsFailWithTheErrorOfTheFault) {
    network.apply(parseFault("net:pattern:refuse=19:after=1:times=1"));
    network.apply(parseFault("net:inbd:refuse"));
    EXPECT_EQ(std::errc{}, errorOf(0x89F0, "pattern", 1));
    EXPECT_EQ(std::errc::no_such_device, errorOf(0x89F1, "pattern", 1));
    EXPECT_EQ(std::errc{}, errorOf(0x89F1, "pattern", 1));
    EXPECT_EQ(std::errc::io_error, errorOf(0x89F3, "inbd"));
    EXPECT_EQ(std::errc::io_error, errorOf(0x89F6, "inbd", 0));
}

TEST_F(NetworkModelsTest, AWireMayBePulledBeforeTheStart) {
    network.apply(parseFault("net:eth0:carrier-down"));
    network.apply(parseFault("net:pattern:carrier-up"));
    EXPECT_FALSE(network.interfaces()[0].hasCarrier);
    EXPECT_TRUE(network.interfaces()[1].hasCarrier);
    EXPECT_TRUE(network.interfaces()[2].hasCarrier);
    EXPECT_FALSE(network.nextChange(ModelTime{}));
}

TEST_F(NetworkModelsTest, AWireMayBePulledAndPluggedWhileTheProgramRuns) {
    connect();
    constexpr ModelTime kStart{1h};
    network.apply(parseFault("net:eth0:carrier-up=300"));
    network.apply(parseFault("net:eth0:carrier-down=200"));
    EXPECT_TRUE(network.interfaces()[0].hasCarrier);
    EXPECT_EQ(kStart + 200ms, network.nextChange(kStart));
    network.change(kStart, kStart + 199ms);
    EXPECT_THAT(plugged, ElementsAre());
    network.change(kStart, kStart + 200ms);
    EXPECT_THAT(plugged, ElementsAre(Pair("eth0", false)));
    EXPECT_EQ(kStart + 300ms, network.nextChange(kStart));
    network.change(kStart, kStart + 1s);
    EXPECT_THAT(plugged, ElementsAre(Pair("eth0", false), Pair("eth0", true)));
    EXPECT_THAT(told, ElementsAre("eth0 carrier down", "eth0 carrier up"));
    EXPECT_FALSE(network.nextChange(kStart));
}

TEST_F(NetworkModelsTest, OnlyWiresOfTheBoardCanBePulled) {
    connect();
    EXPECT_FALSE(network.setCarrier("eth7", false));
    EXPECT_TRUE(network.setCarrier("inbd", false));
    EXPECT_THAT(plugged, ElementsAre(Pair("inbd", false)));
}

TEST_F(NetworkModelsTest, FaultsThatNoInterfaceCanHaveAreRefused) {
    EXPECT_THAT(complaint("net:eth7:carrier-down"), HasSubstr("no interface 'eth7'"));
    EXPECT_THAT(complaint("net:eth0:on-fire"), HasSubstr("there are carrier-down, carrier-up"));
    EXPECT_THAT(complaint("net:eth0:refuse"), HasSubstr("there are carrier-down, carrier-up"));
    EXPECT_THAT(complaint("net:inbd:melt"), HasSubstr("there are carrier-down, carrier-up, refuse"));
    EXPECT_THAT(complaint("net:inbd:refuse=0"), HasSubstr("0 is no error"));
    EXPECT_THAT(complaint("net:inbd:refuse=4096"), HasSubstr("from 0 to 4095"));
    EXPECT_THAT(complaint("net:eth0:carrier-down=soon"), HasSubstr("wants a number"));
}

}  // namespace
