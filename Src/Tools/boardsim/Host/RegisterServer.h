#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "Tools/boardsim/Host/Descriptor.h"
#include "Tools/boardsim/Host/EventLoop.h"

namespace boardsim {

/// Answers the trap libraries of the board's programs for the registers that act: each process has its own
/// connection and waits for the answer to every request. Served by an event loop, in its thread.
class RegisterServer {
public:
    /// @param request valid during the call
    /// @return the value of the RegisterReply; nothing when it is no request: that ends the connection
    using Answer = std::function<std::optional<std::uint64_t>(std::string_view request)>;

    /// @param listener a listening SOCK_SEQPACKET socket
    /// @param loop outlives the server
    RegisterServer(Descriptor listener, EventLoop& loop, Answer answer);
    RegisterServer(const RegisterServer&) = delete;
    RegisterServer& operator=(const RegisterServer&) = delete;
    ~RegisterServer();

private:
    void accept();
    void serve(int program);
    bool answerOne(int program);
    void leave(int program);

    Descriptor listener_;
    EventLoop& loop_;
    Answer answer_;
    std::vector<Descriptor> programs_;
};

}  // namespace boardsim
