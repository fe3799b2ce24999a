#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace boardsim {

/// A directory that gets a writable cover. Its old entries stay visible, but for `hidden`; with `shown` not
/// empty only those stay.
struct CoveredDirectory {
    std::string path;
    std::vector<std::string_view> shown{};
    std::vector<std::string_view> hidden{};
};

/// A plain file with its contents.
struct PlainFile {
    std::string path;
    std::string contents{};
};

/// A symbolic link to another place on the board.
struct SymbolicLink {
    std::string path;
    std::string target;
};

/// A file of the machine that is shown at another place in the board.
struct BorrowedFile {
    std::string source;  ///< as seen outside, absolute
    std::string target;
};

/// A 32-bit register and what it holds when the power comes on.
struct RegisterWord {
    std::uint32_t offset = 0;  ///< in bytes, a multiple of 4
    std::uint32_t value = 0;
};

/// A file that a program can map and whose memory boardsim shares.
struct MemoryFile {
    std::string path{};  ///< none when empty
    std::size_t bytes = 0;
    std::vector<RegisterWord> words{};  ///< all others are 0
};

/// A network interface with a wire plugged in, or without.
struct NetworkInterface {
    std::string name;  ///< up to 15 bytes
    bool hasCarrier = true;
};

/// What a program finds on the board, beside the machine's own files. Directories above a listed path are
/// made as needed. All files can be read and written by everybody, as root's devices can by root's programs.
struct WorldPlan {
    std::vector<CoveredDirectory> covers{};
    std::vector<std::string> directories{};
    std::vector<PlainFile> files{};
    std::vector<SymbolicLink> links{};
    std::vector<BorrowedFile> borrowed{};
    std::vector<std::string> acting{};  ///< files whose every access is answered by boardsim
    std::vector<std::string> trees{};   ///< directories that boardsim serves with all that is in them
    /// Whether the board is of no use without acting files and trees. Where there is no FUSE, and it is not
    /// true, they are left out.
    bool needsFuse = true;
    MemoryFile registers{};
    std::vector<NetworkInterface> interfaces{};  ///< beside the loopback; the machine's are not on the board
    std::string logSocket{};                     ///< path of the datagram socket for syslog; none when empty
    std::string trapSocket{};       ///< path of the datagram socket for register accesses; none when empty
    std::string registerSocket{};   ///< path of the connecting socket for registers that act; none when empty
    std::string hiddenDirectory{};  ///< a free path under a cover, used while the world is made
};

}  // namespace boardsim
