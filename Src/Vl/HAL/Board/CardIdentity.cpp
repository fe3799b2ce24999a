// Who the card is: its identity ROM, its 1-Wire chips and its programmable devices know.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/Errno.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Identity/SerialNo.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/CPInterface.h"
#include "Vl/HAL/Board/CardRom.h"
#include "Vl/HAL/Chips/W1EEPROM.h"
#include "Vl/HAL/Chips/W1Temp.h"
#include "Vl/HAL/Fpga/CoreLayout.h"
#include "Vl/HAL/Fpga/cpld.h"

namespace Valen {
namespace {

constexpr HAL::W1Util::Family kSwitchEeprom = 0x0A;
constexpr int kSerialReads = 30;

/// The sensor that gives the card its serial: the only one on the first bus without user data.
constexpr unsigned int kCardSensor = 0;
constexpr int kCardBus = 1;
constexpr int kOnlyOne = 0;

/// Results of getCPLDVersion() and getFPGAVersion().
enum VersionResult : int {
    Found = 1,
    NoCore = -7,
    NoDevice = -8,
};

template <typename Record>
bool readRecord(long offset, Record& record) {
    return CPInterface::transferRom(offset, sizeof record, &record, false);
}

template <typename Record>
bool writeRecord(long offset, const Record& record) {
    return CPInterface::transferRom(offset, sizeof record, &record, true);
}

/// The hardware counts months from 0.
Version withMonthFromOne(Version version) {
    constexpr std::uint32_t kMonth = 0xFU << 21;
    constexpr std::uint32_t kOneMonth = 1U << 21;
    const std::uint32_t month = (version.words[1] + kOneMonth) & kMonth;
    version.words[1] = (version.words[1] & ~kMonth) | month;
    return version;
}

int readDeviceVersion(const char* device, Version& version) {
    const long address = HAL::getPldCoreAddress(device, "cardid", 1, -1, -1);
    if (address < 0) {
        VL_LOG(CPCardInterface, DEBUG, "couldn't get cardid %s", device);
        return NoCore;
    }
    const std::string path = std::string("/dev/") + device;
    const Descriptor file = Descriptor::open(path.c_str(), O_RDONLY);
    if (!file.isValid()) {
        VL_LOG(CPCardInterface, DEBUG, "could not open '%s'", path.c_str());
        return NoDevice;
    }
    Version record;
    lseek(file.get(), address, SEEK_SET);
    const auto bytes = std::as_writable_bytes(std::span(record.words));
    if (readExact(file.get(), bytes) != std::ssize(bytes)) {
        // What was not read is taken for zeros: meant.
        VL_LOG(CPCardInterface, ERROR, "failed to read %d bytes of card id", static_cast<int>(bytes.size()));
    }
    version = withoutRevision(withMonthFromOne(record));
    return Found;
}

}  // namespace

bool CPInterface::transferRom(long offset, long length, const void* buf, bool write) {
    const Descriptor rom = Descriptor::open(cpld_rom_file, write ? O_WRONLY : O_RDONLY);
    if (!rom.isValid()) {
        VL_LOG(CPCardInterface, ERROR, "could not open rom file");
        return false;
    }
    if (lseek(rom.get(), offset, SEEK_SET) < 0) {
        VL_LOG(CPCardInterface, ERROR, "could not seek %ld in rom file: %s", offset, errnoText());
        return false;
    }
    const auto size = static_cast<std::size_t>(std::max(length, 0L));
    const std::span source(static_cast<const std::byte*>(buf), size);
    const std::span target(static_cast<std::byte*>(const_cast<void*>(buf)), size);
    const ssize_t moved = write ? writeCounting(rom.get(), source) : readExact(rom.get(), target);
    if (moved != length) {
        VL_LOG(CPCardInterface, ERROR, "transfered only %d / %ld bytes", static_cast<int>(moved), length);
        return false;
    }
    return true;
}

bool CPInterface::getMAC(BinaryData::MACAddressType type, MACAddress& address) {
    return readRecord(CardRom::macOffset(type), address);
}

bool CPInterface::setMAC(BinaryData::MACAddressType type, const MACAddress& address) {
    return writeRecord(CardRom::macOffset(type), address);
}

bool CPInterface::getCardID(Version& version, HaldenSerial& serial) {
    Version versionRead;
    HaldenSerial serialRead;
    if (!readRecord(CardRom::kVersionOffset, versionRead) ||
        !readRecord(CardRom::kSerialOffset, serialRead)) {
        return false;
    }
    version = withoutRevision(versionRead);
    serial = serialRead;
    return true;
}

bool CPInterface::SetCardID(const Version& version) {
    return writeRecord(CardRom::kVersionOffset, version);
}

bool CPInterface::SetHaldenSerial(const HaldenSerial& serial) {
    return writeRecord(CardRom::kSerialOffset, serial);
}

bool CPInterface::checkROMData() {
    CardRom::Image image{};
    bool isValid = readRecord(0, image);
    if (isValid) {
        const auto fault = CardRom::parse(image).fault();
        isValid = !fault;
        if (fault) {
            VL_LOG(CPCardInterface, ERROR, "%s", fault->c_str());
        }
    }
    if (!isValid) {
        VL_LOG(CPCardInterface, ERROR, "invalid ROM data");
    }
    return isValid;
}

bool CPInterface::getSwitchCardID(Version& version, SerialNo& chip, HaldenSerial& serial) {
    HAL::W1EEPROM eeprom;
    if (!eeprom.findDevice(HAL::W1EEPROM::kAnyCardType, HAL::W1Util::kAllBusses, kSwitchEeprom) ||
        !eeprom.ReadHaldenSerial(serial, kSerialReads)) {
        return false;
    }
    version = withoutRevision(eeprom.version());
    chip.number = eeprom.handle().value;
    return true;
}

bool CPInterface::getCardSerial(SerialNo& serial) {
    const HAL::W1Temp sensor(kCardSensor, kCardBus, kOnlyOne);
    if (sensor.isOpen() && sensor.id() != HAL::W1Util::W1Handle{}) {
        serial.number = sensor.id().value;
        return true;
    }
    vlslist<HAL::W1Util::W1Handle> chips;
    HAL::W1Util::FindW1(chips, HAL::W1Util::kTemperatureSensor, HAL::W1Util::kAllBusses);
    if (chips.begin() == chips.end()) {
        VL_LOG(CPCardInterface, DEBUG, "GetCardSerial failed!");
        return false;
    }
    VL_LOG(CPCardInterface, DEBUG, "Using lowest unprogrammed W1 chip for cardserial!");
    const auto byNumber = [](const auto& a, const auto& b) { return a.value < b.value; };
    serial.number = std::min_element(chips.begin(), chips.end(), byNumber)->value;
    return true;
}

int CPInterface::getCPLDVersion(Version& version) {
    return readDeviceVersion(HAL::cpld::deviceName, version);
}

int CPInterface::getFPGAVersion(Version& version) {
    return readDeviceVersion(HAL::FPGAInterface::device, version);
}

}  // namespace Valen
