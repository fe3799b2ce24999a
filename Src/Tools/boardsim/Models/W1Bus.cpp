#include "Tools/boardsim/Models/W1Bus.h"

#include <algorithm>
#include <string_view>

namespace boardsim {
namespace {

constexpr unsigned kMissesAllowed = 10;
constexpr long kMostSearches = 1000;
constexpr FileAnswer kGone{0, std::errc::no_such_device};

std::string line(long number) {
    return std::to_string(number) + "\n";
}

W1File constantFile(std::string name, std::vector<std::byte> contents) {
    const std::size_t bytes = contents.size();
    return {std::move(name), bytes,
            [contents = std::move(contents)](std::uint64_t offset, std::span<std::byte> into) {
                return readContents(contents, offset, into);
            }};
}

std::vector<std::byte> bytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

}  // namespace

std::vector<W1File> W1Device::files() {
    const auto rom = id().rom();
    std::vector<W1File> files{constantFile("id", {rom.begin(), rom.end()}),
                              constantFile("name", bytesOf(id().name() + "\n"))};
    for (W1File& file : slave_->files()) {
        files.push_back(std::move(file));
    }
    for (W1File& file : files) {
        file = whileItExists(std::move(file));
    }
    return files;
}

W1File W1Device::whileItExists(W1File file) {
    file.read = [self = shared_from_this(), read = std::move(file.read)](std::uint64_t offset,
                                                                         std::span<std::byte> into) {
        return self->exists_ ? read(offset, into) : kGone;
    };
    if (file.write) {
        file.write = [self = shared_from_this(), write = std::move(file.write)](
                         std::uint64_t offset, std::span<const std::byte> bytes) {
            return self->exists_ ? write(offset, bytes) : kGone;
        };
    }
    return file;
}

std::string W1Bus::name() const {
    return "w1_bus_master" + std::to_string(number_);
}

void W1Bus::search() {
    ++attempts_;
    long found = 0;
    for (const std::shared_ptr<W1Slave>& slave : slaves_) {
        std::shared_ptr<W1Device> device = deviceOf(slave->id());
        if (found < most_ && slave->answersSearch()) {
            ++found;
            if (!device) {
                device = devices_.emplace_back(std::make_shared<W1Device>(slave));
            }
            device->missesLeft_ = kMissesAllowed;
        } else if (device && --device->missesLeft_ == 0) {
            forget(*device);
        }
    }
}

void W1Bus::searchIfContinual() {
    if (isContinual_) {
        search();
    }
}

std::shared_ptr<W1Device> W1Bus::deviceOf(const W1Id& id) const {
    const auto found = std::find_if(devices_.begin(), devices_.end(),
                                    [&](const auto& device) { return device->id() == id; });
    return found == devices_.end() ? nullptr : *found;
}

void W1Bus::forget(const W1Device& device) {
    const auto found =
        std::find_if(devices_.begin(), devices_.end(), [&](const auto& d) { return d.get() == &device; });
    (*found)->exists_ = false;
    devices_.erase(found);
}

std::vector<TextAttribute> W1Bus::attributes() {
    return {
        {"w1_master_name", [this] { return name() + "\n"; }},
        {"w1_master_search", [this] { return line(isContinual_ ? -1 : 0); },
         [this](std::string_view text) { return storeSearch(text); }},
        {"w1_master_slaves", [this] { return listDevices(); }},
        {"w1_master_slave_count", [this] { return line(static_cast<long>(devices_.size())); }},
        {"w1_master_max_slave_count", [this] { return line(most_); },
         [this](std::string_view text) { return storeMost(text); }},
        {"w1_master_attempts", [this] { return line(static_cast<long>(attempts_)); }},
        {"w1_master_timeout", [] { return line(10); }},
        {"w1_master_add", [] { return "write device id xx-xxxxxxxxxxxx to add slave\n"; },
         [this](std::string_view text) { return storeAdd(text); }},
        {"w1_master_remove", [] { return "write device id xx-xxxxxxxxxxxx to remove slave\n"; },
         [this](std::string_view text) { return storeRemove(text); }},
    };
}

std::string W1Bus::listDevices() const {
    std::string names;
    for (const std::shared_ptr<W1Device>& device : devices_) {
        names += device->id().name() + "\n";
    }
    return names.empty() ? "not found.\n" : names;
}

std::errc W1Bus::storeSearch(std::string_view text) {
    long count = 0;
    if (!readNumber(text, count)) {
        return std::errc::invalid_argument;
    }
    isContinual_ = count < 0;
    for (long i = count < 0 ? 1 : std::min(count, kMostSearches); i > 0; --i) {
        search();
    }
    return {};
}

std::errc W1Bus::storeMost(std::string_view text) {
    long count = 0;
    if (!readNumber(text, count) || count < 1) {
        return std::errc::invalid_argument;
    }
    most_ = count;
    return {};
}

std::errc W1Bus::storeAdd(std::string_view text) {
    const std::optional<W1Id> id = W1Id::named(text);
    const auto slave = std::find_if(slaves_.begin(), slaves_.end(),
                                    [&](const auto& candidate) { return candidate->id() == id; });
    if (slave == slaves_.end() || deviceOf(*id)) {
        return std::errc::invalid_argument;
    }
    devices_.push_back(std::make_shared<W1Device>(*slave));
    devices_.back()->missesLeft_ = kMissesAllowed;
    return {};
}

std::errc W1Bus::storeRemove(std::string_view text) {
    const std::optional<W1Id> id = W1Id::named(text);
    const std::shared_ptr<W1Device> device = id ? deviceOf(*id) : nullptr;
    if (!device) {
        return std::errc::invalid_argument;
    }
    forget(*device);
    return {};
}

}  // namespace boardsim
