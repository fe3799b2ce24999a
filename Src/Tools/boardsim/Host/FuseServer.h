#pragma once

#include <functional>
#include <memory>

#include "Tools/boardsim/Host/Descriptor.h"
#include "Tools/boardsim/Host/ServedTree.h"

namespace boardsim {

/// Answers the kernel's requests for a directory with all that is served of a board, over the descriptor of a
/// FUSE file system that is mounted already. Nothing is cached; truncating is taken and means nothing. An
/// ioctl() of a 32-bit program on a 64-bit system is refused with ENOTTY. Not thread-safe.
/// Source: the FUSE protocol as libfuse's low-level interface presents it.
class FuseServer {
public:
    /// @param device owned from now on.
    /// @param beforeRequest called after a request arrived and before it is answered.
    /// @throws std::runtime_error when libfuse refuses.
    FuseServer(Descriptor device, std::shared_ptr<const ServedDirectory> root,
               std::function<void()> beforeRequest);
    FuseServer(const FuseServer&) = delete;
    FuseServer& operator=(const FuseServer&) = delete;
    ~FuseServer();

    /// For poll(): readable when a request waits.
    int descriptor() const;

    /// Answers one request. Does not block when none waits.
    /// @return false when the file system is gone for good.
    bool serveOne();

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace boardsim
