#pragma once

#include <cstdint>
#include <unordered_map>

#include "Tools/boardsim/Host/ServedTree.h"

namespace boardsim {

/// The nodes that a kernel knows of a served tree, by the numbers that it knows them by. A number is never
/// used for a second node. Not thread-safe.
class ServedNodes {
public:
    using Number = std::uint64_t;

    /// @param root gets the number `rootNumber` and stays.
    ServedNodes(std::shared_ptr<const ServedDirectory> root, Number rootNumber);

    /// Counts one more look of the kernel at a node. @return its number, the old one if it has one.
    Number look(const ServedNode& node);

    /// Takes back `looks` of them. A node that none are left of is let go.
    void forget(Number number, std::uint64_t looks);

    /// @return null when there is no such node, or it is of another kind.
    const ServedNode* find(Number number) const;
    template <typename Kind>
    const Kind* findAs(Number number) const {
        const ServedNode* node = find(number);
        const auto* pointer = node == nullptr ? nullptr : std::get_if<std::shared_ptr<const Kind>>(node);
        return pointer == nullptr ? nullptr : pointer->get();
    }

private:
    struct Known {
        ServedNode node;
        std::uint64_t looks;
    };

    std::unordered_map<Number, Known> known_;
    std::unordered_map<const void*, Number> numbers_;
    Number last_;
};

}  // namespace boardsim
