#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "Tools/boardsim/Host/ActingFile.h"
#include "Tools/boardsim/Host/Descriptor.h"

namespace boardsim {

/// Makes the kernel ask before it answers an ioctl() on a network interface that the board has an opinion
/// about: SIOCGMIIPHY, SIOCGMIIREG, SIOCSMIIREG (0x8947-0x8949) and the sixteen requests that are private to
/// a device (0x89F0-0x89FF). Holds for the calling process and all its later children, for good; all other
/// system calls stay as they are.
/// @return what SocketRequests answers on; none where the kernel does not allow it, which then answers
/// itself. Source: seccomp_unotify(2).
Descriptor interceptSocketRequests();

/// One such request. The program sees what is changed in `data`.
struct SocketRequest {
    unsigned code = 0;
    std::string interface;        ///< "eth0"; the first 16 bytes of struct ifreq
    std::span<std::byte> data{};  ///< what comes behind them
};

/// Answers the requests of all programs that are intercepted. Not thread-safe.
class SocketRequests {
public:
    /// Says what the call returns; nothing when it is the kernel's affair after all.
    using Answer = std::function<std::optional<IoctlAnswer>(SocketRequest& request)>;

    /// @param listener what interceptSocketRequests() gave, from now on owned.
    /// @throws std::system_error without memory for requests.
    SocketRequests(Descriptor listener, Answer answer);
    SocketRequests(const SocketRequests&) = delete;
    SocketRequests& operator=(const SocketRequests&) = delete;
    ~SocketRequests();

    /// For poll(): readable when a request waits, and at the end.
    int descriptor() const { return listener_.get(); }

    /// Answers one request. To be called when the descriptor is readable.
    /// @return false when the last program has ended.
    bool serveOne();

private:
    struct Buffers;

    std::optional<IoctlAnswer> answerFor(pid_t caller, unsigned code, std::uint64_t address);

    Descriptor listener_;
    Answer answer_;
    std::unique_ptr<Buffers> buffers_;
};

}  // namespace boardsim
