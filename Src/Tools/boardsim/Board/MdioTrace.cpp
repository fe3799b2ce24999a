#include "Tools/boardsim/Board/MdioTrace.h"

#include <array>
#include <cstdio>

namespace boardsim {

std::string describe(const MdioFrame& frame) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "mdio %s phy %u reg %u 0x%04x%s",
                  frame.isWrite ? "write" : "read", frame.phy, frame.reg, unsigned{frame.data},
                  frame.isAnswered ? "" : ", no answer");
    return text.data();
}

}  // namespace boardsim
