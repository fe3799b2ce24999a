#include "Tests/HAL/Chips/RecordedMdio.h"

#include <ostream>

std::ostream& operator<<(std::ostream& out, const MdioAccess& access) {
    return out << (access.isWrite ? "write " : "read ") << access.reg << ", 0x" << std::hex << access.value
               << std::dec;
}

bool RecordedMdio::setReg(int reg, int value) {
    const bool isFailing = accesses.size() == failing;
    accesses.push_back(write(reg, value));
    if (!isFailing) {
        registers[reg] = value;
    }
    return !isFailing;
}

int RecordedMdio::getReg(int reg) {
    const bool isFailing = accesses.size() == failing;
    const int value = isFailing ? -1 : registers[reg];
    accesses.push_back(read(reg, value));
    return value;
}

void RecordedMdio::changePhyAddress(int /*phyAddress*/) {}
