#include "Tools/boardsim/Board/W1Tree.h"

#include <algorithm>

#include "Tools/boardsim/Board/AttributeFile.h"

namespace boardsim {
namespace {

Transfer toTransfer(const FileAnswer& answer) {
    return {answer.count, answer.error};
}

FileCalls callsOf(const W1File& file) {
    FileCalls calls;
    calls.read = [read = file.read](std::uint64_t offset, std::span<std::byte> into) {
        return toTransfer(read(offset, into));
    };
    if (file.write) {
        calls.write = [write = file.write](std::uint64_t offset, std::span<const std::byte> bytes) {
            return toTransfer(write(offset, bytes));
        };
    }
    return calls;
}

std::shared_ptr<const ServedFile> served(const W1File& file, const std::string& name, const Tell& tell) {
    FileCalls calls = traced(name, callsOf(file), tell);
    const mode_t mode = file.write ? 0644 : 0444;
    return std::make_shared<const ServedFile>(
        ServedFile{[calls = std::move(calls)] { return calls; }, file.bytes, mode});
}

}  // namespace

W1Tree::W1Tree(const std::vector<std::unique_ptr<W1Bus>>& buses, Tell tell) : tell_(std::move(tell)) {
    buses_.reserve(buses.size());
    for (const std::unique_ptr<W1Bus>& bus : buses) {
        Shown& shown = buses_.emplace_back(Shown{bus.get(), {}});
        for (TextAttribute& attribute : bus->attributes()) {
            const std::string name = attribute.name;
            shown.attributes.push_back(
                {name, attributeFile(std::move(attribute), "w1 " + bus->name() + "/" + name, tell_)});
        }
        shown.directory = std::make_shared<const ServedDirectory>(
            ServedDirectory{[this, &shown] { return entriesOf(shown); }});
    }
    const auto devices =
        std::make_shared<const ServedDirectory>(ServedDirectory{[this] { return this->devices(); }});
    root_ = plainDirectory({{"devices", devices}});
}

std::vector<ServedEntry> W1Tree::devices() {
    std::vector<ServedEntry> entries;
    for (Shown& shown : buses_) {
        update(shown);
        entries.push_back({shown.bus->name(), shown.directory});
        for (const DevicePointer& device : shown.bus->devices()) {
            entries.push_back({device->id().name(), shown.links.at(device)});
        }
    }
    return entries;
}

std::vector<ServedEntry> W1Tree::entriesOf(Shown& shown) {
    update(shown);
    std::vector<ServedEntry> entries = shown.attributes;
    for (const DevicePointer& device : shown.bus->devices()) {
        entries.push_back({device->id().name(), shown.devices.at(device)});
    }
    return entries;
}

void W1Tree::update(Shown& shown) {
    shown.bus->searchIfContinual();
    const std::vector<DevicePointer>& known = shown.bus->devices();
    const auto isForgotten = [&](const auto& entry) {
        return std::find(known.begin(), known.end(), entry.first) == known.end();
    };
    std::erase_if(shown.devices, isForgotten);
    std::erase_if(shown.links, isForgotten);
    for (const DevicePointer& device : known) {
        if (!shown.devices.contains(device)) {
            shown.devices.emplace(device, directoryOf(*device));
            shown.links.emplace(device, std::make_shared<const ServedLink>(
                                            ServedLink{shown.bus->name() + "/" + device->id().name()}));
        }
    }
}

std::shared_ptr<const ServedDirectory> W1Tree::directoryOf(W1Device& device) const {
    std::vector<ServedEntry> entries;
    for (const W1File& file : device.files()) {
        entries.push_back({file.name, served(file, "w1 " + device.id().name() + "/" + file.name, tell_)});
    }
    return plainDirectory(std::move(entries));
}

}  // namespace boardsim
