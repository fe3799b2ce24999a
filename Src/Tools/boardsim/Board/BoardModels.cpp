#include "Tools/boardsim/Board/BoardModels.h"

#include <stdexcept>

#include "Tools/boardsim/Board/MdioTrace.h"
#include "Tools/boardsim/Host/RegisterFile.h"

namespace boardsim {
namespace {

Transfer toTransfer(const ScreenAnswer& answer) {
    return {answer.count, answer.error};
}

std::vector<MiiPart> miiParts(const BoardDescription& board, const BoardParts& missing) {
    const bool isMissing = missing.has(BoardPart::Mii) || missing.has(BoardPart::Network);
    return isMissing ? std::vector<MiiPart>{} : board.miiPorts;
}

template <typename Part>
std::optional<Part> unless(bool isMissing, const std::optional<Part>& part) {
    return isMissing ? std::nullopt : part;
}

std::vector<NetworkInterface> interfacesOf(const BoardDescription& board, const BoardParts& missing) {
    std::vector<NetworkInterface> interfaces;
    if (!missing.has(BoardPart::Network)) {
        for (const MiiPart& port : board.miiPorts) {
            interfaces.push_back({port.interface, port.hasCarrier});
        }
    }
    if (board.inband && !missing.has(BoardPart::Inband)) {
        interfaces.push_back({kInbandInterface, board.inband->hasCarrier});
    }
    if (board.pattern && !missing.has(BoardPart::Pattern)) {
        interfaces.push_back({kPatternInterface, board.pattern->hasCarrier});
    }
    return interfaces;
}

}  // namespace

bool hasScreen(const BoardDescription& board, const BoardParts& missing) {
    return board.panel && board.panel->screen && !missing.has(BoardPart::Spi) &&
           !missing.has(BoardPart::Screen);
}

BoardModels::BoardModels(const BoardDescription& board, const BoardParts& missing, ScreenFault screen,
                         const std::vector<Fault>& faults)
    : screen_(board.panel ? board.panel->geometry : PanelGeometry{}, screen),
      registers_(board, std::chrono::steady_clock::now),
      w1_(missing.has(BoardPart::W1) ? std::vector<W1BusPart>{} : board.w1Buses,
          [this](const std::string& line) { tell(line); }),
      gpio_(board.gpioChips, [this](const std::string& line) { tell(line); }),
      mii_(miiParts(board, missing), std::chrono::steady_clock::now,
           [this](const std::string& line) { tell(line); }),
      network_(interfacesOf(board, missing), unless(missing.has(BoardPart::Inband), board.inband),
               unless(missing.has(BoardPart::Pattern), board.pattern),
               [this](const std::string& line) { tell(line); }),
      status_(board, missing),
      i2c_(without(missing, board.i2c)),
      hwmon_(missing.has(BoardPart::Hwmon) ? std::vector<HwmonSensor>{} : board.hwmon,
             [this](const std::string& line) { tell(line); }) {
    if (const std::optional<std::uint32_t> address = board.panelRegisters()) {
        registers_.add({"panel", *address, PanelRegisters::kBlockBytes, &panel_});
    }
    status_.addTo(registers_);
    registers_.listen([this](const MdioFrame& frame) { tell(describe(frame)); });
    if (hasScreen(board, missing)) {
        addScreen(board.panel->screen->directory() + "/screen");
    }
    if (board.videoChip && !missing.has(BoardPart::Spi)) {
        addVideoChip(board.videoChip->directory() + "/adv_regs");
    }
    for (ActingFile& file : i2c_.files()) {
        files_.push_back(std::move(file));
    }
    if (!board.gpioChips.empty() && !missing.has(BoardPart::Gpio)) {
        files_.push_back(gpio_.device());
    }
    if (board.rom && !missing.has(BoardPart::Rom)) {
        rom_.emplace(*board.rom, [this](const std::string& line) { tell(line); });
        files_.push_back(rom_->device());
    }
    if (!board.hwmon.empty() && !missing.has(BoardPart::Hwmon)) {
        trees_.push_back(hwmon_.tree());
    }
    if (!board.w1Buses.empty() && !missing.has(BoardPart::W1)) {
        trees_.push_back(w1_.tree());
    }
    if (!board.gpioChips.empty()) {
        trees_.push_back(gpio_.tree());
    }
    for (const Fault& fault : faults) {
        apply(fault);
    }
}

void BoardModels::tell(const std::string& line) const {
    if (tell_) {
        tell_(line);
    }
}

std::optional<IoctlAnswer> BoardModels::answerForInterface(SocketRequest& request) {
    const std::optional<IoctlAnswer> answer = network_.answer(request);
    return answer ? answer : mii_.answer(request);
}

void BoardModels::apply(const Fault& fault) {
    if (fault.kind == "w1") {
        return w1_.apply(fault);
    }
    if (fault.kind == "gpio") {
        return gpio_.apply(fault);
    }
    if (fault.kind == "mii") {
        return mii_.apply(fault);
    }
    if (fault.kind == "hwmon") {
        return hwmon_.apply(fault);
    }
    if (fault.kind == "rom" && rom_) {
        return rom_->apply(fault);
    }
    if (fault.kind == "net") {
        return network_.apply(fault);
    }
    if (registers_.apply(fault) || status_.apply(fault) || i2c_.apply(fault)) {
        return;
    }
    throw std::invalid_argument("--fault " + fault.text + ": the board has no devices of the kind '" +
                                fault.kind + "'");
}

void BoardModels::addVideoChip(const std::string& path) {
    ByteRegisters registers;
    registers.count = VideoChip::kRegisters;
    registers.get = [this](std::size_t number) { return videoChip_.at(static_cast<std::uint8_t>(number)); };
    registers.set = [this](std::size_t number, std::uint8_t value) {
        videoChip_.set(static_cast<std::uint8_t>(number), value);
    };
    const Tell telling = [this](const std::string& line) { tell(line); };
    files_.push_back(sharedFile(path, traced("video adv_regs", registerFile(registers), telling)));
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
