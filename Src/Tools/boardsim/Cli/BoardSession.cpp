#include "Tools/boardsim/Cli/BoardSession.h"

#include <csignal>
#include <stdexcept>

#include "Tools/boardsim/Board/RegisterTrace.h"
#include "Tools/boardsim/Board/ScreenTrace.h"
#include "Tools/boardsim/Host/ExitStatus.h"
#include "Tools/boardsim/Host/SyslogLine.h"

namespace boardsim {
namespace {

constexpr std::chrono::seconds kGrace{2};

}  // namespace

BoardSession::BoardSession(const RunOptions& options, const BoardDescription& board, BoardModels& models,
                           const WorldPlan& plan, const ProgramStart& start, Outputs& outputs,
                           SignalWatch& signals)
    : board_(board), outputs_(outputs), models_(models), operator_(options.keys), process_(plan, start) {
    if (outputs_.trace) {
        trace_.emplace([this](std::string_view line) { outputs_.trace->write(line); }, start_);
    }
    if (options.timeout) {
        deadline_ = start_ + *options.timeout;
    }
    if (!hasScreen(board, options.missing)) {
        operator_.screenUseless(start_);
    }
    wire(signals);
}

void BoardSession::wire(SignalWatch& signals) {
    models_.screen().listen([this](const ScreenEvent& event) { onScreen(event); });
    if (trace_) {
        models_.listen([this](const std::string& line) { trace(line); });
        models_.i2c().listen([this](std::string_view event, bool isRepeatable) {
            isRepeatable ? traceRepeatable(event) : trace(event);
        });
    }
    loop_.watch(process_.channel().descriptor(), [this] { onControl(); });
    loop_.watch(signals.descriptor(), [this, &signals] {
        if (const std::optional<int> number = signals.takeForwardable()) {
            process_.signal(*number);
        }
    });
    loop_.addTimer([this] { return operator_.due(); }, [this] { playKeys(); });
    loop_.addTimer([this] { return models_.status().nextFrame(); }, [this] { runTimeCode(); });
    loop_.addTimer([this] { return nextEnding(); }, [this] { endProgram(); });
}

/// From now on wires can be plugged and pulled.
void BoardSession::takeWires(Descriptor socket) {
    peers_.emplace(std::move(socket));
    models_.network().connect([this](const std::string& interface, bool hasCarrier) {
        try {
            peers_->setCarrier(interface, hasCarrier);
        } catch (const std::system_error& failure) {
            trace(failure.what());  // A program that may administer the network has removed it.
        }
    });
    loop_.addTimer([this] { return models_.network().nextChange(start_); },
                   [this] { models_.network().change(start_, Clock::now()); });
}

int BoardSession::run() {
    loop_.run();
    while (drainSockets()) {
    }
    if (trace_) {
        trace_->finish();
    }
    process_.join();
    if (!failure_.empty()) {
        throw std::runtime_error(failure_);
    }
    if (endingSignals_ > 0) {
        return kTimedOut;
    }
    if (!waitStatus_) {
        throw std::runtime_error("the board's processes were killed");
    }
    return shellStatus(*waitStatus_);
}

void BoardSession::onControl() {
    std::optional<ControlMessage> message = process_.channel().receive();
    if (!message) {
        loop_.stop();
        return;
    }
    switch (message->kind) {
        case ControlKind::FuseDevice:
            return serveFiles(std::move(message->descriptor));
        case ControlKind::LogSocket:
            return readLog(std::move(message->descriptor));
        case ControlKind::TrapSocket:
            return readTrap(std::move(message->descriptor));
        case ControlKind::RegisterSocket:
            return answerForRegisters(std::move(message->descriptor));
        case ControlKind::SocketRequests:
            return answerForInterfaces(std::move(message->descriptor));
        case ControlKind::RegisterMemory:
            return holdRegisters(std::move(message->descriptor));
        case ControlKind::PeerNetwork:
            return takeWires(std::move(message->descriptor));
        case ControlKind::Failed:
            failure_ = message->text;
            return;
        case ControlKind::Ended:
            waitStatus_ = message->value;
            return;
        case ControlKind::Signal:
            return;
    }
}

void BoardSession::holdRegisters(Descriptor memory) {
    registers_.emplace(std::move(memory), board_.fpga->bytes);
    models_.status().attach(registers_->words(), Clock::now());
}

/// What a cut file loses is there again before it is written.
void BoardSession::runTimeCode() {
    registers_->words();
    models_.status().runUntil(Clock::now());
}

void BoardSession::serveFiles(Descriptor device) {
    server_.emplace(std::move(device), servedRoot(models_.files(), models_.trees()),
                    [this] { drainSockets(); });
    loop_.watch(server_->descriptor(), [this] {
        if (!server_->serveOne()) {
            loop_.unwatch(server_->descriptor());
        }
    });
}

void BoardSession::readLog(Descriptor socket) {
    log_.emplace(std::move(socket), [this](std::string_view datagram) {
        if (outputs_.log) {
            outputs_.log->write(readableSyslogLine(datagram) + "\n");
        }
    });
    loop_.watch(log_->descriptor(), [this] { log_->drain(); });
}

void BoardSession::readTrap(Descriptor socket) {
    trap_.emplace(std::move(socket), [this](std::string_view datagram) { takeRegisterReport(datagram); });
    loop_.watch(trap_->descriptor(), [this] { trap_->drain(); });
}

void BoardSession::answerForRegisters(Descriptor listener) {
    registerServer_.emplace(std::move(listener), loop_,
                            [this](std::string_view request) { return answerRegisterAccess(request); });
}

void BoardSession::answerForInterfaces(Descriptor listener) {
    interfaces_.emplace(std::move(listener), [this](SocketRequest& request) {
        drainSockets();
        return models_.answerForInterface(request);
    });
    loop_.watch(interfaces_->descriptor(), [this] {
        if (!interfaces_->serveOne()) {
            loop_.unwatch(interfaces_->descriptor());
        }
    });
}

void BoardSession::takeRegisterReport(std::string_view datagram) {
    const std::optional<TrapEvent> event = readTrapEvent(datagram);
    if (!event) {
        return;
    }
    if (event->kind == TrapEventKind::Read) {
        traceRepeatable(describe(*event));
        return;
    }
    trace(describe(*event));
    if (event->kind == TrapEventKind::Write) {
        if (const PlacedBlock* block = models_.registers().find(event->offset)) {
            writeBlock(*block, *event);
        }
    }
}

std::optional<std::uint64_t> BoardSession::answerRegisterAccess(std::string_view request) {
    const std::optional<TrapEvent> access = readTrapEvent(request);
    const PlacedBlock* block = access ? models_.registers().find(access->offset) : nullptr;
    if (!block || access->kind == TrapEventKind::Seek) {
        return std::nullopt;
    }
    if (trace_) {
        drainSockets();
    }
    if (access->kind == TrapEventKind::Read) {
        return readBlock(*block, *access);
    }
    trace(describe(*access));
    writeBlock(*block, *access);
    return 0;
}

std::uint64_t BoardSession::readBlock(const PlacedBlock& block, TrapEvent access) {
    const auto offset = static_cast<std::uint32_t>(access.offset - block.base);
    const RegisterValue found = block.block->read(offset, access.width);
    access.value = found.value;
    traceRepeatable(describe(access));
    traceRefusal(block, access, found.refused);
    return found.value;
}

void BoardSession::writeBlock(const PlacedBlock& block, const TrapEvent& access) {
    const auto offset = static_cast<std::uint32_t>(access.offset - block.base);
    traceRefusal(block, access, block.block->write(offset, access.width, access.value));
}

void BoardSession::traceRefusal(const PlacedBlock& block, const TrapEvent& access, const Refusal& refused) {
    if (refused) {
        trace(block.name + " refused " + describe(access) + (refused->empty() ? "" : ": " + *refused));
    }
}

/// What the program did before has been told already; it comes first in log and trace.
bool BoardSession::drainSockets() {
    const bool moreReports = trap_ && trap_->drain();
    const bool moreLines = log_ && log_->drain();
    return moreReports || moreLines;
}

void BoardSession::onScreen(const ScreenEvent& event) {
    if (event.kind == ScreenEvent::Kind::Frame) {
        operator_.frameSeen(Clock::now());
    } else if (event.kind == ScreenEvent::Kind::State) {
        operator_.stateSeen(Clock::now());
    } else if (event.kind == ScreenEvent::Kind::Refused) {
        operator_.screenUseless(Clock::now());
    }
    trace(describe(event));
}

void BoardSession::playKeys() {
    while (const KeyStep* step = operator_.play(Clock::now())) {
        drainSockets();
        trace("operator " + step->text);
        for (const KeyStroke& stroke : step->strokes) {
            models_.panel().operate(stroke.key, stroke.times);
        }
        if (const auto address = board_.panelRegisters(); address && registers_) {
            registers_->store(*address + PanelRegisters::kCounters, models_.panel().counters());
        }
    }
}

std::optional<BoardSession::Clock::time_point> BoardSession::nextEnding() const {
    if (!deadline_ || endingSignals_ > 1) {
        return std::nullopt;
    }
    return endingSignals_ == 0 ? *deadline_ : *deadline_ + kGrace;
}

void BoardSession::endProgram() {
    process_.signal(endingSignals_ == 0 ? SIGTERM : SIGKILL);
    ++endingSignals_;
}

void BoardSession::trace(std::string_view event) {
    if (trace_) {
        trace_->add(Clock::now(), event);
    }
}

void BoardSession::traceRepeatable(std::string_view event) {
    if (trace_) {
        trace_->addRepeatable(Clock::now(), event);
    }
}

}  // namespace boardsim
