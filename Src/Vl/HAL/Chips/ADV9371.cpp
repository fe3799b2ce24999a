#include "Vl/HAL/Chips/ADV9371.h"

#include <fcntl.h>
#include <unistd.h>

namespace Valen {

ADV9371::ADV9371(const char* path) : fd_(Descriptor::open(path, O_RDWR)) {}

int ADV9371::setReg(int reg, std::uint8_t value) {
    if (lseek(fd_.get(), reg, SEEK_SET) < 0) {
        return -1;  // rather than write to whichever register is next
    }
    return static_cast<int>(::write(fd_.get(), &value, sizeof value));
}

int ADV9371::getReg(int reg) {
    std::uint8_t value = 0;  // what a failed read leaves; it is meant to go unreported
    if (lseek(fd_.get(), reg, SEEK_SET) < 0) {
        return value;
    }
    [[maybe_unused]] const ssize_t count = ::read(fd_.get(), &value, sizeof value);
    return value;
}

}  // namespace Valen
