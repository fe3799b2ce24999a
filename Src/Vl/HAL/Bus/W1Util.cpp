#include "Vl/HAL/Bus/W1Util.h"

#include <fcntl.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <system_error>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Files/DirectoryReader.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogInterface.h"

namespace Valen::HAL {
namespace {

constexpr std::uint64_t kLargestFamily = 0xFF;

std::string busPath(int bus) {
    return std::string(W1Util::w1_path) + W1Util::w1_master + std::to_string(bus) + "/";
}

/// Takes the hexadecimal number at the beginning of `text` off it; nothing when there is none or it has more
/// than 64 bits.
std::optional<std::uint64_t> takeHexadecimal(std::string_view& text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

bool writeAttribute(const std::string& path, std::string_view text) {
    const Descriptor file = Descriptor::open(path.c_str(), O_WRONLY);
    return file.isValid() && writeExact(file.get(), text);
}

bool searchBus(int bus) {
    const std::string path = busPath(bus) + "w1_master_search";
    if (writeAttribute(path, "1\n")) {
        return true;
    }
    VL_LOG(OneWire, ERROR, "Unable to search: %s", path.c_str());
    return false;
}

}  // namespace

std::string W1Util::W1Handle::name() const {
    std::array<char, sizeof "28-0000001a2b3c"> text{};
    std::snprintf(text.data(), text.size(), "%02x-%012llx", family(),
                  static_cast<unsigned long long>(serial()));
    return text.data();
}

bool W1Util::FindW1(vlslist<W1Handle>& out, Family family, int bus) {
    DirectoryReader entries(bus == kAllBusses ? w1_path : busPath(bus).c_str());
    while (const char* name = entries.next()) {
        const std::optional<W1Handle> slave = parseName(name);
        if (slave && (family == kAnyFamily || static_cast<Family>(slave->family()) == family)) {
            out.push_front(*slave);
        }
    }
    return !entries.failed();
}

bool W1Util::searchSlaves(int bus) {
    if (bus != kAllBusses) {
        return searchBus(bus);
    }
    bool triggered = true;
    const int busses = numberOfBusses();
    for (int each = 1; each <= busses; ++each) {
        triggered = searchBus(each) && triggered;
    }
    return triggered;
}

int W1Util::numberOfBusses() {
    int busses = 0;
    while (DirUtil::directoryExists(busPath(busses + 1).c_str())) {
        ++busses;
    }
    return busses;
}

int W1Util::findBus(W1Handle slave) {
    const int busses = numberOfBusses();
    for (int bus = 1; bus <= busses; ++bus) {
        if (DirUtil::directoryExists((busPath(bus) + slave.name()).c_str())) {
            return bus;
        }
    }
    return -1;
}

bool W1Util::removeW1Slave(W1Handle slave) {
    const std::string name = slave.name();
    const int bus = findBus(slave);
    if (bus < 0) {
        VL_LOG(OneWire, ERROR, "Unable to find bus of %s\n", name.c_str());
        return false;
    }
    if (!writeAttribute(busPath(bus) + "w1_master_remove", name + "\n")) {
        VL_LOG(OneWire, ERROR, "Unable to remove w1 slave: %s", name.c_str());
        return false;
    }
    VL_LOG(PTPCPeriph, INFO, "removed w1 slave: %s", name.c_str());
    return true;
}

bool W1Util::removeAllW1Slaves() {
    vlslist<W1Handle> slaves;
    bool removed = FindW1(slaves, kAnyFamily, kAllBusses);
    for (const W1Handle slave : slaves) {
        removed = removeW1Slave(slave) && removed;
    }
    return removed;
}

std::optional<W1Util::W1Handle> W1Util::parseName(std::string_view name) {
    const auto family = takeHexadecimal(name);
    if (!family || *family == 0 || *family > kLargestFamily || !name.starts_with('-')) {
        return std::nullopt;
    }
    name.remove_prefix(1);
    const auto serial = takeHexadecimal(name);
    if (!serial || *serial << 16 == 0 || !name.empty()) {
        return std::nullopt;
    }
    return W1Handle{*family << 8 | *serial << 16};
}

std::string W1Util::filePath(W1Handle slave, std::string_view file) {
    return ((w1_path + slave.name()) += '/') += file;
}

}  // namespace Valen::HAL
