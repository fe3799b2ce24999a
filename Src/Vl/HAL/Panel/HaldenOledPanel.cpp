#include "Vl/HAL/Panel/HaldenOledPanel.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <span>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/Graphics/OLED.h"
#include "Vl/HAL/Bus/SPISlave.h"

namespace Valen {
namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 48;
constexpr std::size_t kPixelSize = 2;

}  // namespace

bool HaldenOledPanel::open(const char* spiName, int chipSelect) {
    std::filesystem::path path = SPISlave::open(spiName, chipSelect);
    if (path.empty()) {
        return false;
    }
    path += "/screen";
    VL_LOG(OLED, CONSOLEMIN, "open oled device file: %s\n", path.c_str());
    screen_ = Descriptor::open(path.c_str(), O_RDWR);
    return screen_.isValid();
}

bool HaldenOledPanel::updateScreen(VLGraphics::OLED* frame) {
    const std::span pixels(frame->getBuffer(), static_cast<std::size_t>(frame->getBufferSize()) / kPixelSize);
    auto rest = std::as_bytes(pixels);
    lseek(screen_.get(), 0, SEEK_SET);
    while (!rest.empty()) {
        const ssize_t written = write(screen_.get(), rest.data(), rest.size());
        if (written < 1) {
            break;  // meant to go unreported: the next frame comes soon
        }
        rest = rest.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

bool HaldenOledPanel::setState(OledState state) {
    const std::array<char, 2> line = {static_cast<char>(state), '\n'};
    lseek(screen_.get(), 0, SEEK_SET);
    return write(screen_.get(), line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

bool HaldenOledPanel::isIlluminated() {
    unsigned char lit = 2;  // survives a failed read, which thus means lit: on purpose
    lseek(screen_.get(), 0, SEEK_SET);
    [[maybe_unused]] const ssize_t count = read(screen_.get(), &lit, sizeof lit);
    return lit != 0;
}

int HaldenOledPanel::getXres() {
    return kWidth;
}

int HaldenOledPanel::getYres() {
    return kHeight;
}

}  // namespace Valen
