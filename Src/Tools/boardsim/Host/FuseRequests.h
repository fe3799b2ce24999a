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

/// What the session of a request answers from.
FuseContents& contentsOf(fuse_req_t request);

/// The functions that answer, for fuse_session_new(): those that ask for names and nodes, and those that ask
/// for what an open file does.
fuse_lowlevel_ops fuseRequests();
void addTreeRequests(fuse_lowlevel_ops& table);
void addFileRequests(fuse_lowlevel_ops& table);

}  // namespace boardsim
