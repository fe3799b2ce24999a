#include "Tools/boardsim/Board/BoardModels.h"

#include <array>
#include <cstdio>
#include <stdexcept>

#include "Tools/boardsim/Host/RegisterFile.h"

namespace boardsim {
namespace {

Transfer toTransfer(const ScreenAnswer& answer) {
    return {answer.count, answer.error};
}

/// "video read 0x12 0x80"
std::string describeVideoRegister(const char* what, std::size_t number, unsigned value) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "video %s 0x%02zx 0x%02x", what, number, value);
    return text.data();
}

}  // namespace

BoardModels::BoardModels(const BoardDescription& board, const BoardParts& missing, ScreenFault screen,
                         const std::vector<Fault>& faults)
    : screen_(board.panel, screen),
      registers_(board, std::chrono::steady_clock::now),
      i2c_(missing.has(BoardPart::I2c) ? I2cDescription{} : board.i2c) {
    registers_.add({"panel", board.panelRegisters(), PanelRegisters::kBlockBytes, &panel_});
    if (!missing.has(BoardPart::Spi) && !missing.has(BoardPart::Screen)) {
        addScreen(board.panelDirectory() + "/screen");
    }
    addVideoChip(board.videoDirectory() + "/adv_regs");
    for (ActingFile& file : i2c_.files()) {
        files_.push_back(std::move(file));
    }
    for (const Fault& fault : faults) {
        apply(fault);
    }
}

void BoardModels::apply(const Fault& fault) {
    if (registers_.apply(fault) || i2c_.apply(fault)) {
        return;
    }
    throw std::invalid_argument("--fault " + fault.text + ": the board has no devices of the kind '" +
                                fault.kind + "'");
}

void BoardModels::tell(const Teller& teller) {
    teller_ = teller;
    i2c_.tell(teller);
}

void BoardModels::addVideoChip(const std::string& path) {
    ByteRegisters registers;
    registers.count = VideoChip::kRegisters;
    registers.get = [this](std::size_t number) {
        const std::uint8_t value = videoChip_.at(static_cast<std::uint8_t>(number));
        teller_(describeVideoRegister("read", number, value), true);
        return value;
    };
    registers.set = [this](std::size_t number, std::uint8_t value) {
        videoChip_.set(static_cast<std::uint8_t>(number), value);
        teller_(describeVideoRegister("write", number, value), false);
    };
    files_.push_back(registerFile(path, std::move(registers)));
}

void BoardModels::addScreen(const std::string& path) {
    FileCalls calls;
    calls.read = [this](std::uint64_t offset, std::span<std::byte> into) {
        return toTransfer(screen_.read(offset, into));
    };
    calls.write = [this](std::uint64_t offset, std::span<const std::byte> bytes) {
        return toTransfer(screen_.write(offset, bytes));
    };
    files_.push_back(sharedFile(path, std::move(calls)));
}

}  // namespace boardsim
