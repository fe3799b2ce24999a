#include "Tools/boardsim/Cli/RunCommand.h"

#include <exception>
#include <iostream>
#include <utility>

#include "Tools/boardsim/Board/BoardModels.h"
#include "Tools/boardsim/Board/BoardWorld.h"
#include "Tools/boardsim/Board/Json/BoardJson.h"
#include "Tools/boardsim/Cli/BoardSession.h"
#include "Tools/boardsim/Cli/Outputs.h"
#include "Tools/boardsim/Host/ExitStatus.h"
#include "Tools/boardsim/Host/Preload.h"
#include "Tools/boardsim/Host/ProgramSearch.h"

namespace boardsim {
namespace {

int complain(const std::string& what, int status) {
    std::cerr << "boardsim: " << what << "\n";
    return status;
}

/// A built-in board, or what a file describes.
BoardDescription boardNamed(const std::string& nameOrFile) {
    const BoardDescription* const known = builtInBoard(nameOrFile);
    return known == nullptr ? readBoardFile(nameOrFile) : *known;
}

/// Makes the program ask for the registers that act, and report its accesses to the others where that is
/// wanted. @return an exit status when it cannot.
int addTrap(ProgramStart& start, const WorldPlan& plan, const BoardRegisters& registers) {
    const bool isTraced = !plan.trapSocket.empty();
    if (!isTraced && plan.registerSocket.empty()) {
        return kSuccess;
    }
    const std::optional<std::string> library = findTrapLibrary();
    if (!library) {
        return complain("cannot find libboardsim-trap.so, which the board's registers need", kBoardFailed);
    }
    const std::optional<std::string> program = findProgram(start.words[0], searchPath());
    if (program && isStaticallyLinked(*program)) {
        if (!isTraced) {
            return kSuccess;  // its registers are plain memory
        }
        return complain(*program +
                            " is statically linked: its register accesses cannot be traced; "
                            "run it without --trace",
                        kCannotExecute);
    }
    start.environment =
        trapEnvironment(*library, plan.trapSocket, plan.registerSocket, registers.actingRanges());
    return kSuccess;
}

int runSession(const RunOptions& options, const BoardDescription& board, BoardModels& models,
               const WorldPlan& plan, ProgramStart start, Outputs& outputs) {
    SignalWatch signals;
    start.signalMask = signals.maskBefore();
    BoardSession session(options, board, models, plan, start, outputs, signals);
    const int status = session.run();
    if (session.keyStepsLeft() > 0) {
        std::cerr << "boardsim: the program ended before " << session.keyStepsLeft() << " of "
                  << options.keys.size() << " key steps\n";
    }
    outputs.writePicture(models.screen(), options);
    return status;
}

}  // namespace

int runProgramOnBoard(const RunOptions& options) {
    try {
        Outputs outputs(options);
        const BoardDescription board = boardNamed(options.board);
        BoardModels models(board, options.missing, options.screen, options.faults);
        WorldPlan plan = planWorld(board, options.missing, options.font, models.files(), models.trees(),
                                   !options.traceFile.empty());
        plan.registers.words = models.status().powerOn();
        plan.interfaces = models.network().interfaces();
        ProgramStart start{options.program};
        start.asksAboutInterfaces = models.answersForInterfaces();
        if (const int refused = addTrap(start, plan, models.registers()); refused != kSuccess) {
            return refused;
        }
        outputs.start();
        try {
            return runSession(options, board, models, plan, std::move(start), outputs);
        } catch (const std::exception& failure) {
            return complain(failure.what(), kBoardFailed);
        }
    } catch (const std::exception& failure) {
        return complain(failure.what(), kUsageError);
    }
}

}  // namespace boardsim
