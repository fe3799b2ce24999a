#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/BoardModels.h"
#include "Tools/boardsim/Cli/Outputs.h"
#include "Tools/boardsim/Cli/RunOptions.h"
#include "Tools/boardsim/Host/BoardProcess.h"
#include "Tools/boardsim/Host/DatagramReader.h"
#include "Tools/boardsim/Host/EventLoop.h"
#include "Tools/boardsim/Host/FuseServer.h"
#include "Tools/boardsim/Host/Network.h"
#include "Tools/boardsim/Host/RegisterServer.h"
#include "Tools/boardsim/Host/RegisterTrap/TrapEvent.h"
#include "Tools/boardsim/Host/SharedRegisters.h"
#include "Tools/boardsim/Host/SignalWatch.h"
#include "Tools/boardsim/Host/SocketRequests.h"
#include "Tools/boardsim/Host/TraceLog.h"
#include "Tools/boardsim/Operator/KeyPlayer.h"

namespace boardsim {

/// One run of a program on a board: the operator, and the wires between him, the models and the processes
/// of the board. Single-threaded.
class BoardSession {
public:
    /// @param board `models`, `outputs` and `signals` outlive the session.
    /// @throws std::exception when the board's processes cannot be made.
    BoardSession(const RunOptions& options, const BoardDescription& board, BoardModels& models,
                 const WorldPlan& plan, const ProgramStart& start, Outputs& outputs, SignalWatch& signals);

    /// Serves the board until nothing of it is left. @return the exit status for boardsim.
    /// @throws std::exception when the board cannot be made or served; it is gone when the session is
    /// destroyed.
    int run();

    std::size_t keyStepsLeft() const { return operator_.remaining(); }

private:
    using Clock = EventLoop::Clock;

    void wire(SignalWatch& signals);
    void onControl();
    void holdRegisters(Descriptor memory);
    void runTimeCode();
    void takeWires(Descriptor socket);
    void serveFiles(Descriptor device);
    void readLog(Descriptor socket);
    void readTrap(Descriptor socket);
    void answerForRegisters(Descriptor listener);
    void answerForInterfaces(Descriptor listener);
    void takeRegisterReport(std::string_view datagram);
    std::optional<std::uint64_t> answerRegisterAccess(std::string_view request);
    std::uint64_t readBlock(const PlacedBlock& block, TrapEvent access);
    void writeBlock(const PlacedBlock& block, const TrapEvent& access);
    void traceRefusal(const PlacedBlock& block, const TrapEvent& access, const Refusal& refused);
    bool drainSockets();
    void onScreen(const ScreenEvent& event);
    void playKeys();
    std::optional<Clock::time_point> nextEnding() const;
    void endProgram();
    void trace(std::string_view event);
    void traceRepeatable(std::string_view event);

    const BoardDescription& board_;
    Outputs& outputs_;
    BoardModels& models_;
    KeyPlayer operator_;
    Clock::time_point start_ = Clock::now();
    std::optional<TraceLog> trace_;
    EventLoop loop_;

    std::optional<Clock::time_point> deadline_;
    int endingSignals_ = 0;  ///< how often the program was told to end because its time is over

    std::optional<int> waitStatus_;
    std::string failure_;

    // Destroyed in reverse: a process that waits for an answer of the server must be let go before the
    // board's processes can be waited for.
    BoardProcess process_;
    std::optional<SharedRegisters> registers_;
    std::optional<PeerNetwork> peers_;
    std::optional<DatagramReader> log_;
    std::optional<DatagramReader> trap_;
    std::optional<RegisterServer> registerServer_;
    std::optional<FuseServer> server_;
    std::optional<SocketRequests> interfaces_;
};

}  // namespace boardsim
