#include "Tools/boardsim/Host/DatagramReader.h"

#include <sys/socket.h>

#include <cerrno>

namespace boardsim {
namespace {

/// More than a sender's socket takes at once by default (net.core.wmem_default).
constexpr std::size_t kLongest = std::size_t{256} * 1024;

/// A socket's queue holds fewer before its senders have to wait (net.unix.max_dgram_qlen: 10, with systemd
/// 512).
constexpr int kMostAtOnce = 1024;

}  // namespace

DatagramReader::DatagramReader(Descriptor socket, std::function<void(std::string_view)> take)
    : socket_(std::move(socket)), take_(std::move(take)), buffer_(kLongest) {}

bool DatagramReader::drain() {
    for (int i = 0; i < kMostAtOnce; ++i) {
        const ssize_t received = recv(socket_.get(), buffer_.data(), buffer_.size(), MSG_DONTWAIT);
        if (received >= 0) {
            take_({buffer_.data(), static_cast<std::size_t>(received)});
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace boardsim
