#include "Vl/HAL/Chips/Sx1509b.h"

#include <utility>

namespace Valen {

using namespace Sx1509bRegisters;

namespace {

constexpr unsigned int kPins = 8;  // of a port

constexpr std::uint8_t lowByte(std::uint16_t word) {
    return static_cast<std::uint8_t>(word);
}

constexpr std::uint8_t highByte(std::uint16_t word) {
    return static_cast<std::uint8_t>(word >> 8);
}

constexpr std::uint16_t wordOf(std::uint8_t low, std::uint8_t high) {
    return static_cast<std::uint16_t>(high << 8 | low);
}

/// `levels` with the pins in `mask` as in `values`, whose other bits are set, too.
constexpr std::uint8_t withPins(std::uint8_t levels, unsigned int mask, unsigned int values) {
    return static_cast<std::uint8_t>((levels & ~mask) | values);
}

}  // namespace

constexpr Sx1509b::Bank Sx1509b::kA = {&Sx1509b::a_, &Sx1509b::pendingA_, RegDataA, RegDirA};
constexpr Sx1509b::Bank Sx1509b::kB = {&Sx1509b::b_, &Sx1509b::pendingB_, RegDataB, RegDirB};

Sx1509b::Sx1509b(int bus, int slave, bool flag) {
    init(bus, slave, flag);
}

int Sx1509b::init(int bus, int slave, bool flag) {
    bus_ = bus;
    slave_ = slave;
    pendingA_ = false;
    pendingB_ = false;
    if (!i2c_.init(bus, flag)) {
        return 1;
    }
    if (!i2c_.selectSlave(slave)) {
        return 2;
    }
    std::uint16_t data = 0;
    std::uint16_t directions = 0;
    if (!i2c_.read16(RegDataB, data) || !i2c_.read16(RegDirB, directions)) {
        return 3;
    }
    a_ = {highByte(directions), highByte(data)};
    b_ = {lowByte(directions), lowByte(data)};
    return 0;
}

std::string Sx1509b::dbg_print() const {
    return "sx1509b: " + std::to_string(bus_) + "-" + std::to_string(slave_);
}

int Sx1509b::getInputA() {
    return i2c_.read8(RegDataA);
}

int Sx1509b::getInputB() {
    return i2c_.read8(RegDataB);
}

bool Sx1509b::setValueA(std::uint8_t pin, std::uint8_t value, bool deferred) {
    return setValue(kA, pin, value, deferred);
}

bool Sx1509b::setValueB(std::uint8_t pin, std::uint8_t value, bool deferred) {
    return setValue(kB, pin, value, deferred);
}

bool Sx1509b::setAOutputs(std::uint8_t mask, std::uint8_t values) {
    return setOutputs(kA, mask, values);
}

bool Sx1509b::setBOutputs(std::uint8_t mask, std::uint8_t values) {
    return setOutputs(kB, mask, values);
}

bool Sx1509b::setADirection(std::uint8_t direction, std::uint8_t data) {
    return setDirection(kA, direction, data);
}

bool Sx1509b::setBDirection(std::uint8_t direction, std::uint8_t data) {
    return setDirection(kB, direction, data);
}

bool Sx1509b::setInADisable(std::uint8_t value) {
    return i2c_.write(RegInputDisableA, value);
}

bool Sx1509b::setInBDisable(std::uint8_t value) {
    return i2c_.write(RegInputDisableB, value);
}

bool Sx1509b::setAOpenDrain(std::uint8_t value) {
    return i2c_.write(RegOpenDrainA, value);
}

bool Sx1509b::setBOpenDrain(std::uint8_t value) {
    return i2c_.write(RegOpenDrainB, value);
}

bool Sx1509b::setLedAEnable(std::uint8_t value) {
    return i2c_.write(RegLEDDriverEnableA, value);
}

bool Sx1509b::setLedBEnable(std::uint8_t value) {
    return i2c_.write(RegLEDDriverEnableB, value);
}

bool Sx1509b::setSenseHighB(std::uint8_t value) {
    return i2c_.write(RegSenseHighB, value);
}

bool Sx1509b::setClock(std::uint8_t value) {
    return i2c_.write(RegClock, value);
}

bool Sx1509b::setMisc(std::uint8_t value) {
    return i2c_.write(RegMisc, value);
}

bool Sx1509b::setIOnX(std::uint8_t io, std::uint8_t value) {
    return i2c_.write(regIonXAddress[io], value);
}

int Sx1509b::getEvtStatusB() {
    return i2c_.read8(RegEventStatusB);
}

bool Sx1509b::setEvtStatusB(std::uint8_t value) {
    return i2c_.write(RegEventStatusB, value);
}

bool Sx1509b::writeDataRegisters() {
    const bool a = std::exchange(pendingA_, false);
    const bool b = std::exchange(pendingB_, false);
    if (a && b) {
        return writeData();
    }
    if (a) {
        return i2c_.write(RegDataA, a_.data);
    }
    return !b || i2c_.write(RegDataB, b_.data);
}

int Sx1509b::detectReset() {
    std::uint16_t directions = 0;
    if (!i2c_.read16(RegDirB, directions)) {
        return -1;
    }
    return directions != wordOf(b_.dir, a_.dir) ? 1 : 0;
}

bool Sx1509b::reinitRegisters() {
    return i2c_.write16(RegDirB, wordOf(b_.dir, a_.dir)) && writeData();
}

bool Sx1509b::setValue(const Bank& bank, std::uint8_t pin, std::uint8_t value, bool deferred) {
    std::uint8_t& shadow = (this->*bank.shadow).data;
    const unsigned int bit = pin < kPins ? 1U << pin : 0;
    const std::uint8_t data = withPins(shadow, bit, value != 0 ? bit : 0);
    if (data == shadow) {
        return true;
    }
    shadow = data;
    if (deferred) {
        this->*bank.pending = true;
        return true;
    }
    return i2c_.write(bank.data, data);
}

bool Sx1509b::setOutputs(const Bank& bank, std::uint8_t mask, std::uint8_t values) {
    const Port& shadow = this->*bank.shadow;
    return setDirection(bank, withPins(shadow.dir, mask, 0), withPins(shadow.data, mask, values));
}

bool Sx1509b::setDirection(const Bank& bank, std::uint8_t direction, std::uint8_t data) {
    this->*bank.shadow = {direction, data};
    return i2c_.write(bank.data, data) && i2c_.write(bank.direction, direction);
}

bool Sx1509b::writeData() {
    return i2c_.write16(RegDataB, wordOf(b_.data, a_.data));
}

}  // namespace Valen
