#include <cerrno>
#include <memory>
#include <string>

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Sections/PhyRow.h"
#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"
#include "Vl/HAL/Board/HD24Interface.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Bus/MDIO.h"
#include "Vl/HAL/Chips/GenericEthernetPhy.h"

namespace boardinfo::sections {
namespace {

constexpr const char* kMdioCore = "ethernet_mdio";
constexpr int kAddresses = 32;
constexpr int kConfigPorts = 2;

std::shared_ptr<Valen::HAL::GenericEthernetPhy> configPhyOf(Board& board, int port) {
    return board.orca() != nullptr ? board.orca()->getConfigEthPhy(port)
                                   : board.common().getConfigEthPhy(port);
}

/// The newer board has both PHYs behind its first interface, the older one each behind its own.
std::shared_ptr<Valen::HAL::MDIO> configMdioOf(Board& board, int port) {
    return board.orca() != nullptr ? board.link().getEthMDIO(0, port) : board.link().getEthMDIO(port, 0);
}

/// There is no such interface, or it has no PHY.
bool meansNoPhy(int error) {
    return error == ENODEV || error == EOPNOTSUPP;
}

Row configPhy(Board& board, int port) {
    const std::string name = "port " + std::to_string(port);
    const auto mdio = configMdioOf(board, port);
    errno = 0;
    const PhyPresence presence = presenceOf(*mdio);
    const int error = errno;
    switch (presence) {
        case PhyPresence::Answers:
            return phyRow(name, *configPhyOf(board, port), mdio);
        case PhyPresence::Nobody:
            return notPresent(name);
        case PhyPresence::BusFails:
            break;
    }
    return {name, silence(!meansNoPhy(error))};
}

}  // namespace

Section mdioPhys(Board& board) {
    Section section{"PHYs on MDIO", Form::Found};
    const State master = coreState(board, kMdioCore);
    if (master == State::Failed) {
        section.rows.push_back(failed(kMdioCore));
    }
    if (master != State::Ok) {
        return section;
    }
    for (int address = 0; address < kAddresses; ++address) {
        const auto mdio = board.common().getMdio(address);
        const PhyPresence presence = presenceOf(*mdio);
        if (presence == PhyPresence::BusFails) {
            section.rows.push_back(failed(kMdioCore));  // each further address would take its whole time, too
            break;
        }
        if (presence == PhyPresence::Answers) {
            const auto driver = board.common().getPhy(address);
            section.rows.push_back(phyRow("PHY " + std::to_string(address), *driver, mdio));
        }
    }
    return section;
}

Section configPhys(Board& board) {
    Section section{"configuration PHYs"};
    for (int port = 0; port < kConfigPorts; ++port) {
        section.rows.push_back(configPhy(board, port));
    }
    return section;
}

}  // namespace boardinfo::sections
