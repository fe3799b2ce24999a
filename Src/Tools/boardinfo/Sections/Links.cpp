#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"

namespace boardinfo::sections {
namespace {

using Valen::CPLinkInterface;

constexpr int kPorts = 2;
constexpr const char* kInterfaces = "/sys/class/net/";

Row port(CPLinkInterface& link, int number) {
    const std::string name = "eth" + std::to_string(number);
    if (!exists(kInterfaces + name)) {
        return notPresent(name);
    }
    const int state = link.EthLinkState(number);
    return answered(name, std::string(state == CPLinkInterface::NoCarrier ? "down" : "up"))
        .with("in-band", state == CPLinkInterface::InbandSlave);
}

/// The length of the fibre at a port, which the in-band interface knows.
Row fibre(CPLinkInterface& link, int number) {
    const std::string name = "fibre " + std::to_string(number);
    if (!exists(std::string(kInterfaces) + "inbd")) {
        return notPresent(name);
    }
    const int length = link.getFiberLength(number);
    return length < 0 ? failed(name) : answered(name, std::int64_t{length});
}

Row pattern() {
    const std::string directory = std::string(kInterfaces) + "pattern";
    std::ifstream counter(directory + "/statistics/tx_bytes");
    std::int64_t sent = 0;
    std::optional<Value> value;
    if (counter >> sent) {
        value = sent;
    }
    return rowOf("pattern", value, exists(directory), "bytes sent");
}

}  // namespace

Section links(Board& board) {
    Section section{"links"};
    for (int number = 0; number < kPorts; ++number) {
        section.rows.push_back(port(board.link(), number));
    }
    for (int number = 0; number < kPorts; ++number) {
        section.rows.push_back(fibre(board.link(), number));
    }
    section.rows.push_back(pattern());
    return section;
}

}  // namespace boardinfo::sections
