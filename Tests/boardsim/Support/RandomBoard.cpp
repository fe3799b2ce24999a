#include "Tests/boardsim/Support/RandomBoard.h"

#include <algorithm>
#include <random>

namespace boards {
namespace {

using namespace boardsim;

/// What is drawn is the same everywhere, unlike what the distributions of the standard library draw.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}

    /// From 0 to `most`.
    std::uint64_t upTo(std::uint64_t most) {
        const std::uint64_t high = engine_();
        const std::uint64_t drawn = high << 32 | engine_();
        return most == ~0ULL ? drawn : drawn % (most + 1);
    }
    std::int32_t between(std::int32_t least, std::int32_t most) {
        return least + static_cast<std::int32_t>(upTo(static_cast<std::uint64_t>(most - least)));
    }
    bool oneIn(std::uint64_t count) { return upTo(count - 1) == 0; }

    template <typename T>
    void shuffle(std::vector<T>& values) {
        for (std::size_t i = values.size(); i > 1; --i) {
            std::swap(values[i - 1], values[upTo(i - 1)]);
        }
    }

private:
    std::mt19937 engine_;
};

/// Every core gets other addresses, a kilobyte each: no block is larger.
void place(FpgaPart& fpga, Dice& dice) {
    constexpr std::uint32_t kStep = 0x400;
    const std::size_t strangers = dice.upTo(4);
    for (std::size_t i = 0; i < strangers; ++i) {
        fpga.cores.push_back({"stranger_" + std::to_string(i), 0, {0}});
    }
    dice.shuffle(fpga.cores);
    std::uint32_t next = 0;
    for (Core& core : fpga.cores) {
        core.version = static_cast<std::uint32_t>(dice.upTo(0x7FFFFFFF));
        for (std::uint32_t& address : core.addresses) {
            address = next | static_cast<std::uint32_t>(dice.upTo(0x3F));
            next += kStep;
        }
    }
    fpga.bytes = std::max<std::size_t>(0x10000, next);
}

/// A version of card type 0x80, as the ROM and the EEPROMs have it.
std::array<std::uint32_t, 3> drawVersion(Dice& dice) {
    const auto number = [&](std::int32_t least, std::int32_t most) {
        return static_cast<std::uint32_t>(dice.between(least, most));
    };
    return {0x80000000U | number(0, 0xFFFF) << 8 | number(0, 0xFF),
            number(0, 40) << 25 | number(1, 12) << 21 | number(1, 28) << 16 | number(0, 0xFFFF),
            dice.oneIn(2) ? 0 : 0x80000000U | number(0, 99) << 16 | number(0, 99)};
}

/// An EAN-13, whose last digit makes the weighted sum of all a multiple of ten.
std::uint64_t drawEan(Dice& dice) {
    std::uint64_t rest = dice.upTo(999'999'999'998) + 1;
    const std::uint64_t number = rest * 10;
    unsigned sum = 0;
    for (unsigned weight = 3; rest > 0; rest /= 10, weight = 4 - weight) {
        sum += weight * static_cast<unsigned>(rest % 10);
    }
    return number + (10 - sum % 10) % 10;
}

void putLittleEndian(std::vector<std::uint8_t>& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i, value >>= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value));
    }
}

void draw(W1EepromPart& eeprom, Dice& dice) {
    constexpr std::uint64_t kMoment = 0x7FFFFFFF;
    eeprom.serial = dice.upTo(0xFFFFFFFFFFFE) + 1;
    EepromRecord serial{0, {}};
    putLittleEndian(serial.data, drawEan(dice), 8);
    putLittleEndian(serial.data, dice.upTo(kMoment), 4);
    putLittleEndian(serial.data, dice.upTo(kMoment), 4);
    EepromRecord version{18, {}};
    for (const std::uint32_t word : drawVersion(dice)) {
        putLittleEndian(version.data, word, 4);
    }
    eeprom.records = {serial, version};
}

void draw(std::vector<W1BusPart>& buses, Dice& dice) {
    for (W1BusPart& bus : buses) {
        for (W1EepromPart& eeprom : bus.eeproms) {
            draw(eeprom, dice);
        }
        for (W1SensorPart& sensor : bus.sensors) {
            sensor.serial = dice.upTo(0xFFFFFFFFFFFE) + 1;
            sensor.temperature = dice.between(-55 * 16, 125 * 16);
        }
    }
}

/// The hardware counts months from 0.
std::array<std::uint32_t, 3> drawCardId(Dice& dice) {
    constexpr std::uint32_t kMonth = 1U << 21;
    std::array<std::uint32_t, 3> version = drawVersion(dice);
    version[1] -= kMonth;
    return version;
}

void draw(CpldPart& cpld, Dice& dice) {
    const std::uint32_t place = cpld.cores.front().addresses.front() / 64 * 16;
    const std::array<std::uint32_t, 3> version = drawCardId(dice);
    std::copy(version.begin(), version.end(), cpld.words.begin() + place);
}

void draw(SyncSettings& sync, Dice& dice) {
    constexpr std::uint64_t kId = (1ULL << 56) - 1;
    sync.isMaster = dice.oneIn(2);
    sync.id = dice.upTo(kId);
    sync.master = sync.isMaster ? sync.id : dice.upTo(kId);
    sync.rate = dice.oneIn(2) ? FrameRate::Fps25 : FrameRate::Fps30;
    sync.networkId = static_cast<std::uint32_t>(dice.upTo(0xFFFFFFFE));
    sync.timeCode.seconds = static_cast<std::uint32_t>(dice.upTo(86'399));
    sync.timeCode.frames = static_cast<std::uint32_t>(dice.upTo(static_cast<std::uint64_t>(sync.rate) - 1));
    for (std::uint8_t& groups : sync.timeCode.userBits) {
        groups = static_cast<std::uint8_t>(dice.upTo(0xFF));
    }
}

/// What the FPGA tells, and what is known of the network.
void drawStatus(BoardDescription& board, Dice& dice) {
    if (board.fpga) {
        board.fpga->cardId = drawCardId(dice);
    }
    if (board.sync) {
        draw(board.sync->settings, dice);
    }
    if (board.misc) {
        board.misc->celsius = dice.between(-128, 127);
        board.misc->others = static_cast<std::uint32_t>(dice.upTo(0xFFFFFF)) << 8;
    }
    for (TemperaturePart& part : board.temperatures) {
        part.celsius = dice.between(0, 200);
    }
    for (MiiPart& port : board.miiPorts) {
        port.hasCarrier = !dice.oneIn(4);
    }
    if (board.inband) {
        board.inband->slave = dice.oneIn(4) ? "" : "eth1";
        for (std::int32_t& length : board.inband->fibreLengths) {
            length = dice.between(0, 10'000);
        }
    }
}

MacAddress drawMac(Dice& dice) {
    MacAddress mac{0x02, 0x00, 0x5E};
    for (std::size_t i = 3; i < mac.size(); ++i) {
        mac[i] = static_cast<std::uint8_t>(dice.upTo(0xFF));
    }
    return mac;
}

void draw(IdentityMemory& identity, Dice& dice) {
    const auto word = [&] { return static_cast<std::uint16_t>(dice.upTo(0xFFFF)); };
    identity.device = {
        drawEan(dice), static_cast<std::uint32_t>(dice.upTo(0xFFFFF)), {dice.upTo(~0ULL), dice.upTo(~0ULL)}};
    identity.pcb = {word(), word(), {}};
    for (int i = 0; i < 3; ++i) {
        identity.pcb->revision += "0123456789abcdef"[dice.upTo(15)];
    }
    identity.macs.assign(dice.upTo(4), {});
    std::generate(identity.macs.begin(), identity.macs.end(), [&] { return drawMac(dice); });
    if (dice.oneIn(3)) {
        identity.device.reset();
    }
    if (dice.oneIn(3)) {
        identity.pcb.reset();
    }
}

void draw(I2cDescription& i2c, Dice& dice) {
    for (I2cDevice& device : i2c.devices) {
        if (device.chip == I2cChip::TemperatureSensor) {
            device.sixteenths = dice.between(-55 * 16, 127 * 16);
        }
        if (device.identity) {
            draw(*device.identity, dice);
        }
    }
}

void draw(RomPart& rom, Dice& dice) {
    constexpr std::int32_t kMoment = 0x7FFFFFFF;
    std::generate(rom.macs.begin(), rom.macs.end(), [&] { return drawMac(dice); });
    rom.version = drawVersion(dice);
    rom.serial = {drawEan(dice), dice.between(0, kMoment), dice.between(0, kMoment)};
}

}  // namespace

BoardDescription randomBoard(std::uint32_t seed) {
    Dice dice(seed);
    BoardDescription board = dice.oneIn(3) ? hd24Board() : orcaBoard();
    board.name += "-" + std::to_string(seed);
    if (board.fpga) {
        place(*board.fpga, dice);
    }
    draw(board.w1Buses, dice);
    if (board.cpld) {
        draw(*board.cpld, dice);
    }
    draw(board.i2c, dice);
    drawStatus(board, dice);
    if (board.rom) {
        draw(*board.rom, dice);
    }
    for (HwmonSensor& sensor : board.hwmon) {
        sensor.millidegrees = dice.between(-40000, 125000);
    }
    const std::size_t missing = dice.oneIn(4) ? 0 : dice.upTo(4);
    for (std::size_t i = 0; i < missing; ++i) {
        const std::vector<Removal> choices = removals(board);
        if (!choices.empty()) {
            board = choices[dice.upTo(choices.size() - 1)].board;
        }
    }
    return board;
}

}  // namespace boards
