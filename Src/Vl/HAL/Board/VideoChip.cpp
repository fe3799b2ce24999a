#include "Vl/HAL/Board/VideoChip.h"

#include <filesystem>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Bus/SPISlave.h"
#include "Vl/HAL/Chips/ADV9371.h"
#include "Vl/HAL/Chips/ADVI2C.h"

namespace Valen {
namespace {

constexpr int kAnyChipSelect = -1;

}  // namespace

std::shared_ptr<ADVInterface> openVideoChipOnSpi() {
    std::filesystem::path path = SPISlave::open("spi_videosync_out", kAnyChipSelect);
    if (path.empty()) {
        VL_LOG(CPCardInterface, ERROR, "ADV SPI not found!");
        return nullptr;
    }
    path += "/adv_regs";
    VL_LOG(CPCardInterface, DEBUG, "ADV SPI found: %s", path.c_str());
    return std::make_shared<ADV9371>(path.c_str());
}

std::shared_ptr<ADVInterface> openVideoChipOnI2c(const char* name) {
    auto chip = std::make_shared<ADVI2C>();
    if (!chip->init(name)) {
        VL_LOG(Core, ERROR, "Unable to open adv '%s'", name);
    }
    return chip;
}

}  // namespace Valen
