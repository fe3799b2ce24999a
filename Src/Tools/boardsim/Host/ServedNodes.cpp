#include "Tools/boardsim/Host/ServedNodes.h"

#include <algorithm>

namespace boardsim {
namespace {

const void* identity(const ServedNode& node) {
    return std::visit([](const auto& pointer) -> const void* { return pointer.get(); }, node);
}

}  // namespace

ServedNodes::ServedNodes(std::shared_ptr<const ServedDirectory> root, Number rootNumber) : last_(rootNumber) {
    numbers_.emplace(root.get(), rootNumber);
    known_.emplace(rootNumber, Known{std::move(root), 1});
}

ServedNodes::Number ServedNodes::look(const ServedNode& node) {
    const auto [place, isNew] = numbers_.try_emplace(identity(node), last_ + 1);
    if (isNew) {
        known_.emplace(++last_, Known{node, 0});
    }
    ++known_.at(place->second).looks;
    return place->second;
}

void ServedNodes::forget(Number number, std::uint64_t looks) {
    const auto place = known_.find(number);
    if (place == known_.end()) {
        return;
    }
    Known& known = place->second;
    known.looks -= std::min(looks, known.looks);
    if (known.looks == 0) {
        numbers_.erase(identity(known.node));
        known_.erase(place);
    }
}

const ServedNode* ServedNodes::find(Number number) const {
    const auto place = known_.find(number);
    return place == known_.end() ? nullptr : &place->second.node;
}

}  // namespace boardsim
