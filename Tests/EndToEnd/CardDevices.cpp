// A program that uses the device's drivers as its words say, one after the other, and prints what they
// answer.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Vl/Common/Log/LogImpl.h"
#include "Vl/HAL/Bus/GPIO.h"
#include "Vl/HAL/Bus/LinuxMdio.h"
#include "Vl/HAL/Bus/W1Util.h"
#include "Vl/HAL/Chips/EthernetPhy88E1510.h"
#include "Vl/HAL/Chips/EthernetPhyDP83867IS.h"
#include "Vl/HAL/Chips/W1EEPROM.h"
#include "Vl/HAL/Chips/W1Temp.h"
#include "Vl/HAL/Fpga/cpld.h"

namespace {

using namespace Valen;
using namespace Valen::HAL;

int number(const std::string& text) {
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 0));
}

const char* yes(bool is) {
    return is ? "yes" : "no";
}

W1EEPROM identity(int bus) {
    W1EEPROM eeprom;
    if (!eeprom.findDevice(W1EEPROM::kAnyCardType, bus)) {
        std::printf("no identity EEPROM\n");
    }
    return eeprom;
}

void listSlaves(const std::string& bus) {
    vlslist<W1Util::W1Handle> found;
    W1Util::FindW1(found, W1Util::kAnyFamily, number(bus));
    found.sort([](const auto& one, const auto& other) { return one.value < other.value; });
    for (const W1Util::W1Handle& slave : found) {
        std::printf("%s on bus %d\n", slave.name().c_str(), W1Util::findBus(slave));
    }
}

void removeSlave(const std::string& name) {
    std::printf("removed %s\n",
                yes(W1Util::removeW1Slave(W1Util::parseName(name).value_or(W1Util::W1Handle{}))));
}

void readIdentity(const std::string& bus) {
    const W1EEPROM eeprom = identity(number(bus));
    HaldenSerial serial;
    const bool isRead = eeprom.ReadHaldenSerial(serial, 30);
    std::printf("%s serial %s %013llu valid %s type 0x%02x\n", eeprom.handle().name().c_str(), yes(isRead),
                static_cast<unsigned long long>(serial.number), yes(serial.IsValid()),
                eeprom.version().words[0] >> 24);
}

/// Writes so many bytes of a pattern as a record at 40, and says whether they were read back.
void writeRecord(const std::string& size) {
    W1EEPROM eeprom = identity(W1Util::kAllBusses);
    std::string data;
    for (int i = 0; i < number(size); ++i) {
        data += static_cast<char>('A' + i % 26);
    }
    std::printf("written %s\n", yes(eeprom.WriteEEPROMPart(data.data(), number(size), 40)));
}

/// Waits until the poller has read a sensor that `userData`, a bus and `select` choose.
void readSensor(const std::string& userData) {
    W1Temp sensor(static_cast<unsigned>(number(userData)), W1Util::kAllBusses, 0);
    std::printf("%s open %s\n", sensor.id().name().c_str(), yes(sensor.isOpen()));
    for (int i = 0; i < 500 && sensor.isOpen() && sensor.temperature() == W1Temp::kUnknown; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    std::printf("temperature %d\n", sensor.temperature());
}

/// As boards do it with a reset line: takes it by the chip's label, makes it an output, high, gives it back.
void releaseReset(const std::string& label) {
    GPIO gpio;
    const int line = GPIO::getBase(label.c_str()) + 3;
    std::printf("line %d: %d", line, gpio.request(line));
    std::printf(" %d", gpio.setdir(line, true, true));
    std::printf(" high %s", yes(gpio.getPin(line)));
    std::printf(" %d", gpio.setPin(line, 0));
    std::printf(" high %s", yes(gpio.getPin(line)));
    std::printf(" %d\n", gpio.free(line));
}

template <typename Chip>
void usePhy(int interface, int address) {
    const int socket = LinuxMdio::createSocket();
    const auto mdio = std::make_shared<LinuxMdio>();
    mdio->Init(socket, interface, address);
    Chip phy;
    phy.setMDIO(mdio);
    std::printf("id 0x%04x 0x%04x init %s", static_cast<unsigned>(phy.getPhyId1()),
                static_cast<unsigned>(phy.getPhyId2()), yes(phy.initUserEth()));
    std::printf(" set %s", yes(phy.setSpeed(GenericEthernetPhy::Mbit1000)));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    std::printf(" speed %d up %s\n", static_cast<int>(phy.getLinkSpeed()), yes(phy.getLinkUp()));
}

const std::map<std::string, std::function<void(const std::string&)>> kWords{
    {"buses", [](const std::string&) { std::printf("%d buses\n", W1Util::numberOfBusses()); }},
    {"list", listSlaves},
    {"search",
     [](const std::string& bus) { std::printf("searched %s\n", yes(W1Util::searchSlaves(number(bus)))); }},
    {"remove", removeSlave},
    {"remove-all",
     [](const std::string&) { std::printf("removed all %s\n", yes(W1Util::removeAllW1Slaves())); }},
    {"identity", readIdentity},
    {"write", writeRecord},
    {"temperature", readSensor},
    {"reset", releaseReset},
    {"phy0", [](const std::string&) { usePhy<EthernetPhy88E1510>(0, 0); }},
    {"phy1", [](const std::string&) { usePhy<EthernetPhyDP83867IS>(1, 1); }},
    {"cpld", [](const std::string&) { std::printf("cpld type %d\n", cpld::getType()); }},
};

}  // namespace

int main(int argc, char** argv) {
    Log::vlLog = std::make_unique<Log::LogImpl>();
    Log::vlLog->LogInit();
    for (const std::string& word : std::vector<std::string>(argv + 1, argv + argc)) {
        const std::size_t colon = std::min(word.find(':'), word.size());
        kWords.at(word.substr(0, colon))(colon < word.size() ? word.substr(colon + 1) : "");
        std::fflush(stdout);
    }
}
