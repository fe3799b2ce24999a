#include "Vl/HAL/Bus/I2CSlave.h"

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>

#include <array>
#include <string>

namespace Valen {
namespace {

/// @param direction I2C_SMBUS_WRITE or I2C_SMBUS_READ.
/// @param size      I2C_SMBUS_BYTE_DATA or I2C_SMBUS_WORD_DATA.
bool transferSmbus(int fd, std::uint8_t direction, int reg, std::uint32_t size, i2c_smbus_data& data) {
    i2c_smbus_ioctl_data transfer = {direction, static_cast<std::uint8_t>(reg), size, &data};
    return ioctl(fd, I2C_SMBUS, &transfer) >= 0;
}

/// @return whether the kernel reports all messages done.
template <std::size_t Count>
bool transferMessages(int fd, std::array<i2c_msg, Count> messages) {
    i2c_rdwr_ioctl_data transfer = {messages.data(), Count};
    return ioctl(fd, I2C_RDWR, &transfer) == static_cast<int>(Count);
}

}  // namespace

bool I2CSlave::init(int bus, bool flag) {
    const std::string path = "/dev/i2c-" + std::to_string(bus);
    flag_ = flag;
    fd_ = Descriptor::open(path.c_str(), O_RDWR);
    return fd_.isValid();
}

bool I2CSlave::selectSlave(int address) {
    slave_ = address;
    return ioctl(fd_.get(), I2C_SLAVE, static_cast<unsigned long>(address)) >= 0;
}

bool I2CSlave::write(int reg, std::uint8_t value) {
    i2c_smbus_data data = {};
    data.byte = value;
    return transferSmbus(fd_.get(), I2C_SMBUS_WRITE, reg, I2C_SMBUS_BYTE_DATA, data);
}

bool I2CSlave::write16(int reg, std::uint16_t value) {
    i2c_smbus_data data = {};
    data.word = value;
    return transferSmbus(fd_.get(), I2C_SMBUS_WRITE, reg, I2C_SMBUS_WORD_DATA, data);
}

int I2CSlave::read8(int reg) {
    std::uint8_t value = 0;
    return read(reg, value) ? value : -1;
}

bool I2CSlave::read(int reg, std::uint8_t& value) {
    i2c_smbus_data data = {};
    if (!transferSmbus(fd_.get(), I2C_SMBUS_READ, reg, I2C_SMBUS_BYTE_DATA, data)) {
        return false;
    }
    value = data.byte;
    return true;
}

bool I2CSlave::read16(int reg, std::uint16_t& value) {
    i2c_smbus_data data = {};
    if (!transferSmbus(fd_.get(), I2C_SMBUS_READ, reg, I2C_SMBUS_WORD_DATA, data)) {
        return false;
    }
    value = data.word;
    return true;
}

bool I2CSlave::readMultiAt(int reg, std::uint8_t* buffer, int length) {
    const auto address = static_cast<std::uint16_t>(slave_);
    auto first = static_cast<std::uint8_t>(reg);
    return transferMessages<2>(
        fd_.get(), {{
                       {address, 0, sizeof first, &first},
                       {address, I2C_M_RD | I2C_M_NOSTART, static_cast<std::uint16_t>(length), buffer},
                   }});
}

bool I2CSlave::writeMulti(const void* data, int length) {
    // The kernel's record has no const; a written message is only read.
    auto* bytes = static_cast<std::uint8_t*>(const_cast<void*>(data));
    return transferMessages<1>(
        fd_.get(), {{{static_cast<std::uint16_t>(slave_), 0, static_cast<std::uint16_t>(length), bytes}}});
}

}  // namespace Valen
