#pragma once

#include <sys/types.h>

#include <utility>

#include "Tools/boardsim/Host/ControlChannel.h"
#include "Tools/boardsim/Host/ProgramStart.h"
#include "Tools/boardsim/Host/WorldPlan.h"

namespace boardsim {

/// The processes of one board, seen from boardsim: a keeper that makes the world and waits, below it process
/// 1 of the board, below that the program. The keeper stays in boardsim's process namespace, so that the
/// kernel tells the server of the acting files callers by the numbers that boardsim knows them by.
///
/// All of them, the mounts and the sockets vanish when the program ends, when this object is destroyed and
/// when boardsim dies in any way. Not thread-safe.
class BoardProcess {
public:
    /// Starts to make the board; what becomes of it comes over channel().
    /// Must be called while boardsim has one thread, with SIGCHLD blocked.
    /// @throws std::system_error when no process can be made.
    BoardProcess(const WorldPlan& plan, const ProgramStart& start);
    BoardProcess(const BoardProcess&) = delete;
    BoardProcess& operator=(const BoardProcess&) = delete;
    ~BoardProcess();

    /// Closed by the other side when the last process has ended.
    ControlChannel& channel() { return channel_; }

    /// Asks for a signal to be sent to the program; does nothing when it has ended.
    void signal(int number);

    /// Waits until nothing of the board is left.
    void join();

private:
    BoardProcess(const WorldPlan& plan, const ProgramStart& start,
                 std::pair<ControlChannel, ControlChannel> ends);

    ControlChannel channel_;
    pid_t boardsim_;  ///< the process that owns this object
    pid_t keeper_ = -1;
};

}  // namespace boardsim
