#pragma once

#include <forward_list>

namespace Valen {

/// A singly linked list: new entries are pushed at the front, iterators stay valid until their own entry is
/// erased.
template <typename Entry>
using vlslist = std::forward_list<Entry>;

}  // namespace Valen
