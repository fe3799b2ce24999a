#include "Vl/HAL/Board/CPInterface.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Fpga/CoreLayout.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace Valen {
namespace {

constexpr std::size_t kWordSize = sizeof(std::uint32_t);

/// Registers of the central sync block, as word indices.
constexpr std::size_t kSyncWord = 52 / kWordSize;

constexpr int kAnyVersion = -1;
constexpr int kVersionWord = 0;

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

unsigned int CPInterface::getTimestamp() {
    const volatile std::uint32_t* sync = fpga_.centralSync();
    return sync != nullptr ? sync[kSyncWord] : 0;
}

int CPInterface::getOledPanelCount() const {
    return 0;
}

std::unique_ptr<OledPanelInterface> CPInterface::getOledPanel(int /*index*/) {
    return nullptr;
}

bool CPInterface::readFPGA(unsigned int offset, unsigned int& value) {
    const auto registers = fpga_.words(offset);
    if (registers.empty()) {
        return false;
    }
    value = registers.front();
    return true;
}

bool CPInterface::writeFPGA(unsigned int offset, unsigned int value) {
    const auto registers = fpga_.words(offset);
    if (registers.empty()) {
        return false;
    }
    registers.front() = value;
    return true;
}

bool CPInterface::readFPGA(unsigned int offset, void* buf, unsigned int count) {
    const auto registers = fpga_.words(offset);
    auto* to = static_cast<std::byte*>(buf);
    for (const volatile std::uint32_t& source :
         registers.first(std::min<std::size_t>(count, registers.size()))) {
        const std::uint32_t value = source;
        std::memcpy(to, &value, kWordSize);
        to += kWordSize;
    }
    return true;  // meant, whatever was there to read
}

bool CPInterface::writeFPGA(unsigned int offset, const void* buf, unsigned int count) {
    const auto registers = fpga_.words(offset);
    const auto* from = static_cast<const std::byte*>(buf);
    for (volatile std::uint32_t& target : registers.first(std::min<std::size_t>(count, registers.size()))) {
        std::uint32_t value;
        std::memcpy(&value, from, kWordSize);
        target = value;
        from += kWordSize;
    }
    return true;  // meant, whatever was there to write
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
        return HAL::getPldCoreInfo(*layout, name, &word, n, 1, kAnyVersion, kAnyVersion) == 1;
    };
    unsigned int address = 0;
    if (!layout || !read(i + 1, address)) {
        return {};
    }
    const auto registers = fpga_.words(address & HAL::kCoreAddressMask);
    unsigned int version = 0;
    if (registers.empty() || !read(kVersionWord, version)) {
        return {};
    }
    return {registers.data(), version};
}

}  // namespace Valen
