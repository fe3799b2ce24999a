#include "Tools/boardsim/Board/GpioTree.h"

#include <algorithm>

#include "Tools/boardsim/Board/AttributeFile.h"

namespace boardsim {
namespace {

std::vector<ServedEntry> served(std::vector<TextAttribute> attributes, const std::string& prefix,
                                const Tell& tell) {
    std::vector<ServedEntry> entries;
    for (TextAttribute& attribute : attributes) {
        const std::string name = attribute.name;
        entries.push_back({name, attributeFile(std::move(attribute), prefix + name, tell)});
    }
    return entries;
}

}  // namespace

GpioTree::GpioTree(GpioClass& gpio, Tell tell)
    : gpio_(gpio), tell_(std::move(tell)), files_(served(gpio.files(), "gpio ", tell_)) {
    root_ = std::make_shared<const ServedDirectory>(ServedDirectory{[this] { return entries(); }});
}

std::vector<ServedEntry> GpioTree::entries() {
    std::vector<ServedEntry> entries = files_;
    std::map<std::string, std::shared_ptr<const ServedDirectory>> now;
    for (GpioClass::Directory& directory : gpio_.directories()) {
        const auto old = shown_.find(directory.name);
        const auto shown =
            old != shown_.end()
                ? old->second
                : plainDirectory(served(std::move(directory.files), "gpio " + directory.name + "/", tell_));
        entries.push_back({directory.name, shown});
        now.emplace(directory.name, shown);
    }
    shown_ = std::move(now);
    return entries;
}

}  // namespace boardsim
