#include "Vl/HAL/Chips/W1Temp.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>

#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Bus/Pause.h"
#include "Vl/HAL/Chips/W1TempThread.h"

namespace Valen::HAL {
namespace {

using namespace std::chrono_literals;

constexpr const char* kTemperatureFile = "temp";
constexpr const char* kUserFile = "user";
constexpr int kUserDataReads = 10;
constexpr auto kBetweenReads = 50ms;
constexpr int kDead = -1;

constexpr std::uint32_t kInvalidReading = 0xFFFFFFFF;

/// The slave's two bytes, little-endian: 0 to 0xFFFF, or kDead.
int GetUserData(W1Util::W1Handle slave) {
    const std::string path = W1Util::filePath(slave, kUserFile);
    for (int attempt = 0; attempt < kUserDataReads; ++attempt) {
        if (attempt > 0) {
            pauseFor(kBetweenReads);
        }
        const Descriptor file = Descriptor::open(path.c_str(), O_RDONLY);
        std::array<std::byte, 2> bytes{};
        if (readExact(file.get(), bytes) == static_cast<ssize_t>(bytes.size())) {
            return std::to_integer<int>(bytes[0]) | std::to_integer<int>(bytes[1]) << 8;
        }
    }
    VL_LOG(CPCardInterface, DEBUG, "failed reading userdata from %s, assume that device is dead!!",
           path.c_str());
    return kDead;
}

/// Whether `slave` is to be chosen rather than the one chosen before.
bool isPreferred(W1Util::W1Handle slave, W1Util::W1Handle chosen, int select) {
    return (select > 0 && slave.value < chosen.value) || (select < 0 && slave.value > chosen.value);
}

}  // namespace

W1Temp::W1Temp(unsigned int userData, int bus, int select)
    : userData_(static_cast<std::int32_t>(userData)), bus_(bus), select_(select) {
    Find();
    W1TempThread::AddSensor(this);
}

W1Temp::~W1Temp() {
    W1TempThread::RemoveSensor(this);
}

void W1Temp::Find() {
    close();
    vlslist<W1Util::W1Handle> slaves;
    W1Util::FindW1(slaves, W1Util::kTemperatureSensor, bus_);
    W1Util::W1Handle chosen;
    int matches = 0;
    for (const W1Util::W1Handle slave : slaves) {
        if (isWanted(slave) && (++matches == 1 || isPreferred(slave, chosen, select_))) {
            chosen = slave;
        }
    }
    id_ = chosen.value;
    if (matches == 1 || (matches > 1 && select_ != 0)) {
        const std::string path = W1Util::filePath(chosen, kTemperatureFile);
        if (matches > 1) {
            VL_LOG(CPCardInterface, DEBUG, "found %d matching w1 temp, selected %s by evade: %d", matches,
                   path.c_str(), select_);
        }
        open(path.c_str());
    } else {
        VL_LOG(CPCardInterface, DEBUG, "found %d matching w1 temp of type %X", matches,
               static_cast<unsigned int>(userData_));
    }
    temperature_ = kUnknown;
}

bool W1Temp::isWanted(W1Util::W1Handle slave) const {
    const int userData = GetUserData(slave);
    if (userData < 0) {
        return false;
    }
    if (userData_ == kAnyUserData) {
        return true;
    }
    if (userData_ >= 0) {
        return userData == userData_;
    }
    const int unwanted = ~userData_;
    VL_LOG(CPCardInterface, DEBUG, "tried to match %lX %X != %X", slave.value,
           static_cast<unsigned int>(unwanted), static_cast<unsigned int>(userData));
    return userData != unwanted;
}

W1Temp::Reading W1Temp::updatetemp() {
    if (!isOpen()) {
        temperature_ = kUnknown;
        return Failed;
    }
    std::uint32_t reading = 0;
    const auto bytes = std::as_writable_bytes(std::span(&reading, 1));
    if (lseek(file_.get(), 0, SEEK_SET) != 0 ||
        readExact(file_.get(), bytes) != static_cast<ssize_t>(bytes.size())) {
        close();
        return Failed;
    }
    if (reading == kInvalidReading) {
        return Invalid;
    }
    temperature_ = static_cast<std::int32_t>(reading);
    return Updated;
}

void W1Temp::Fail() {
    temperature_ = kUnknown;
    Find();
}

void W1Temp::open(const char* path) {
    file_ = Descriptor::open(path, O_RDONLY);
    isOpen_ = file_.get() >= 1;  // 0 counts as closed, as in File::In
    if (!file_.isValid()) {
        VL_LOG(CPCardInterface, DEBUG, "could not open %s\n", path);
    }
}

void W1Temp::close() {
    isOpen_ = false;
    file_ = Descriptor();
}

}  // namespace Valen::HAL
