#include "Vl/HAL/Board/CPInterface.h"

#include <limits>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/VideoChip.h"
#include "Vl/HAL/Bus/AlteraSpi.h"
#include "Vl/HAL/Bus/FakeMdio.h"
#include "Vl/HAL/Bus/FpgaMdio.h"
#include "Vl/HAL/Chips/ADVInterface.h"
#include "Vl/HAL/Fpga/CoreLayout.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace Valen {
namespace {

constexpr int kFound = 1;
constexpr int kAnyVersion = -1;
constexpr int kVersionWord = 0;
constexpr int kFirstSpan = 1;

}  // namespace

CPInterface* CPInterface::globalCPInterface = nullptr;

CPInterface::CPInterface() {
    if (!gpio_.isOpen()) {
        VL_LOG(CPCardInterface, ERROR, "could not open gpio!");
    }
    if (fpga_.openDevice()) {
        fpga_.loadCoreAddresses();
    }
    globalCPInterface = this;
}

CPInterface::~CPInterface() {
    globalCPInterface = nullptr;
}

int CPInterface::getOledPanelCount() const {
    return 0;
}

std::unique_ptr<OledPanelInterface> CPInterface::getOledPanel(int /*index*/) {
    return nullptr;
}

std::shared_ptr<ADVInterface> CPInterface::getADV() {
    if (!adv_) {
        adv_ = openVideoChipOnSpi();
    }
    return adv_;
}

void CPInterface::initMdio(const char* coreName) {
    unsigned int address = 0;
    if (getCoreAddress(coreName, address, kFirstSpan, kAnyVersion) == kFound) {
        mdio_ = registersAt(address);
    }
}

std::shared_ptr<HAL::MDIO> CPInterface::getMdio(int phyID) {
    if (phyID >= 0 && mdio_ != nullptr) {
        return std::make_shared<HAL::FpgaMdio>(mdio_, phyID);
    }
    VL_LOG(CPCardInterface, ERROR, "failed to get MDIO for phyID %d (mdio @ %p)", phyID,
           static_cast<void*>(const_cast<std::uint32_t*>(mdio_)));
    return std::make_shared<HAL::FakeMdio>();
}

std::shared_ptr<AlteraSpi> CPInterface::getSpiCore(const char* name) {
    unsigned int address = 0;
    if (getCoreAddress(name, address, kFirstSpan, kAnyVersion) != kFound) {
        return nullptr;
    }
    return std::make_shared<AlteraSpi>(this, address);
}

int CPInterface::getCoreAddress(const char* name, unsigned int& address, int n, int minVersion,
                                int maxVersion) {
    return HAL::getPldCoreAddress(HAL::FPGAInterface::device, name, &address, n, minVersion, maxVersion);
}

int CPInterface::getCoreAddress(const char* name, unsigned int& address, int n, int version) {
    return getCoreAddress(name, address, n, version, version);
}

std::pair<volatile std::uint32_t*, unsigned int> CPInterface::getCoreRegs(const char* name, int i) {
    if (i == std::numeric_limits<int>::max()) {
        return {};  // no core has that many words, and there is no next number to ask for
    }
    const auto layout = HAL::readLayout(HAL::FPGAInterface::device);
    const auto read = [&](int n, unsigned int& word) {
        return HAL::getPldCoreInfo(*layout, name, &word, n, 1, kAnyVersion, kAnyVersion) == kFound;
    };
    unsigned int address = 0;
    if (!layout || !read(i + 1, address)) {
        return {};
    }
    volatile std::uint32_t* registers = registersAt(address & HAL::kCoreAddressMask);
    unsigned int version = 0;
    if (registers == nullptr || !read(kVersionWord, version)) {
        return {};
    }
    return {registers, version};
}

volatile std::uint32_t* CPInterface::registersAt(unsigned int address) const {
    return fpga_.has(address) ? &fpga_.word(address) : nullptr;
}

}  // namespace Valen
