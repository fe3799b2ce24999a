#pragma once

#define FUSE_USE_VERSION 35
#include <fuse_lowlevel.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "Tools/boardsim/Host/ServedNodes.h"

namespace boardsim {

/// What requests of a FUSE session are answered from: its nodes, and what is open of them. It is the
/// session's user data.
struct FuseContents {
    ServedNodes nodes;
    std::unordered_map<std::uint64_t, FileCalls> files{};                       ///< open files
    std::unordered_map<std::uint64_t, std::vector<ServedEntry>> directories{};  ///< open directories
    std::uint64_t lastOpened = 0;
};

/// The functions that answer, for fuse_session_new().
fuse_lowlevel_ops fuseRequests();

}  // namespace boardsim
