// The drivers of the FPGA's cores at work on the virtual board: each word brings up one of them, which prints
// how it went.
#include <chrono>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>

#include "Vl/Common/Log/LogImpl.h"
#include "Vl/HAL/Board/CPInterface.h"
#include "Vl/HAL/Bus/AlteraSpi.h"
#include "Vl/HAL/Bus/FpgaMdio.h"
#include "Vl/HAL/Chips/EthernetPhy88E1510.h"
#include "Vl/HAL/Chips/EthernetPhyDP83867IS.h"
#include "Vl/HAL/Fpga/TripleSpeedMac.h"

namespace {

using Valen::HAL::GenericEthernetPhy;

constexpr unsigned int kPortReset = 0x440;

class Board : public Valen::CPInterface {
public:
    std::shared_ptr<GenericEthernetPhy> getPhy(int port) override {
        return port == 0 ? dp83867() : phy88e1510();
    }
    int GetCardTemperature(unsigned int& /*temperature*/, Enums::Temperature::Type /*place*/) override {
        return -1;
    }

    unsigned int addressOf(const char* core) {
        unsigned int address = 0;
        getCoreAddress(core, address, 1, -1);
        return address;
    }

    template <typename Phy>
    std::shared_ptr<GenericEthernetPhy> phy(int address) {
        auto phy = std::make_shared<Phy>();
        phy->setMDIO(std::make_shared<Valen::HAL::FpgaMdio>(getCoreRegs("ethernet_mdio", 0).first, address));
        return phy;
    }
    std::shared_ptr<GenericEthernetPhy> dp83867() { return phy<Valen::HAL::EthernetPhyDP83867IS>(0); }
    std::shared_ptr<GenericEthernetPhy> phy88e1510() { return phy<Valen::HAL::EthernetPhy88E1510>(1); }
};

const char* ok(bool isOk) {
    return isOk ? "ok" : "failed";
}

/// Identifier, setting up, and each speed once the PHY has had the time to negotiate it.
void drive(GenericEthernetPhy& phy) {
    std::printf("%x %x\n", static_cast<unsigned>(phy.getPhyId1()), static_cast<unsigned>(phy.getPhyId2()));
    std::printf("init %s\n", ok(phy.initUserEth()));
    for (const auto speed :
         {GenericEthernetPhy::Mbit10, GenericEthernetPhy::Mbit100, GenericEthernetPhy::Mbit1000}) {
        const bool isSet = phy.setSpeed(speed);
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        std::printf("speed %d %s, is %d\n", speed, ok(isSet), phy.getLinkSpeed());
    }
}

void setUpUserPort(Board& board) {
    std::shared_ptr<GenericEthernetPhy> phy = board.dp83867();
    const unsigned int mac = board.addressOf("subsys_hps_eth_mac");
    std::printf("user port %s\n", ok(board.initUserEth(kPortReset, mac, false, phy, true)));
}

void sendWords(Board& board) {
    Valen::AlteraSpi spi(&board, board.addressOf("subsys_hps_ext_spi"));
    bool isSent = spi.selectSlave(1);
    for (const unsigned int word : {0x11U, 0x22U, 0x33U}) {
        isSent = spi.writeWord(word) && isSent;
    }
    std::printf("words %s\n", ok(spi.unselect() && isSent));
}

const std::map<std::string, std::function<void(Board&)>> kWords{
    {"dp83867", [](Board& board) { drive(*board.dp83867()); }},
    {"88e1510", [](Board& board) { drive(*board.phy88e1510()); }},
    {"user-port", setUpUserPort},
    {"spi", sendWords},
};

}  // namespace

int main(int argc, char** argv) {
    Valen::Log::vlLog = std::make_unique<Valen::Log::LogImpl>();
    Valen::Log::vlLog->LogInit();
    Board board;
    for (int i = 1; i < argc; ++i) {
        kWords.at(argv[i])(board);
    }
}
