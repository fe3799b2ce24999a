#include "Tools/boardinfo/Sections/Presence.h"

#include <sys/stat.h>

#include "Tools/boardinfo/Board.h"
#include "Vl/HAL/Board/HD24Interface.h"
#include "Vl/HAL/Bus/I2CRegisteredDevice.h"

namespace boardinfo::sections {
namespace {

constexpr int kFirstAddress = 1;
constexpr int kAnyVersion = -1;

}  // namespace

bool exists(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

State coreState(Board& board, const char* core) {
    Valen::CPInterface& cp = board.common();
    unsigned int address = 0;
    if (cp.getCoreAddress(core, address, kFirstAddress, kAnyVersion) != 1 || !exists("/dev/fpga")) {
        return State::NotPresent;
    }
    unsigned int word = 0;
    return cp.readFPGA(address, word) ? State::Ok : State::Failed;
}

bool isRegistered(const char* i2cDevice) {
    return Valen::I2CRegisteredDevice::getAddressOf(i2cDevice).name[0] != '\0';
}

}  // namespace boardinfo::sections
