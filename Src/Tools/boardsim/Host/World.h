#pragma once

#include "Tools/boardsim/Host/ControlChannel.h"
#include "Tools/boardsim/Host/WorldPlan.h"

namespace boardsim {

/// Makes the plan true for the calling process and its later children: enters private mount, network and
/// process namespaces, so that the next child becomes process 1, and arranges files, sockets and devices.
/// Hands the descriptors with which boardsim serves them over `host` and keeps none. Acting files work as
/// soon as the other side serves the descriptor, and it must do so before this returns.
///
/// Must be called while the process has one thread.
/// @throws std::exception whose text says what failed and, for what an administrator can allow, how.
void makeWorld(const WorldPlan& plan, ControlChannel& host);

/// The name under which a served thing of a plan is looked up on the served descriptor: its acting files are
/// numbered from 0, its trees from where they end.
std::string actingName(std::size_t index);

}  // namespace boardsim
