#include "Tools/boardsim/Board/BoardWorld.h"

#include <algorithm>

#include "Tools/boardsim/Board/BoardModels.h"
#include "Tools/boardsim/Board/I2cWorld.h"

namespace boardsim {
namespace {

const std::string kFontDirectory = "/opt/pattern/oled";

/// In a directory where a program looks for what it knows by name. A board on a board has its own.
constexpr std::string_view kRegisterSocket = ".boardsim-registers";

/// What a program may expect under "/dev" on any system. Everything else there belongs to the machine's own
/// hardware.
const std::vector<std::string_view> kUsualNodes{"null", "zero",  "full",   "random", "urandom",
                                                "tty",  "ptmx",  "pts",    "shm",    "mqueue",
                                                "fuse", "stdin", "stdout", "stderr", "fd"};

std::string layoutFile(const BoardDescription& board, const BoardParts& missing) {
    std::vector<Core> cores = board.fpga->cores;
    if (missing.has(BoardPart::PanelRegisters) && board.panel) {
        std::erase_if(cores, [&](const Core& core) { return core.name == board.panel->registerCore; });
    }
    if (board.sync && missing.has(BoardPart::Sync)) {
        std::erase_if(cores, [&](const Core& core) { return core.name == board.sync->core; });
    }
    return encodeLayout(cores);
}

void planPanel(WorldPlan& plan, const BoardDescription& board, const BoardParts& missing) {
    if (board.panel && board.panel->screen && !missing.has(BoardPart::Spi)) {
        plan.directories.push_back(board.panel->screen->directory());
    }
}

void planFpga(WorldPlan& plan, const BoardDescription& board, const BoardParts& missing) {
    if (!board.fpga) {
        return;
    }
    const std::string directory = std::string(kBusDevices) + "fpga";
    plan.directories.push_back(directory);
    if (!missing.has(BoardPart::Layout)) {
        plan.files.push_back({directory + "/layout", layoutFile(board, missing)});
    }
    if (!missing.has(BoardPart::Fpga)) {
        plan.registers = {"/dev/fpga", board.fpga->bytes};
        plan.registerSocket = std::string("/sys/bus/").append(kRegisterSocket);
    }
}

/// Its registers only tell what it is: a plain file holds them.
void planCpld(WorldPlan& plan, const CpldPart& cpld) {
    plan.files.push_back({std::string(kBusDevices) + "cpld/layout", encodeLayout(cpld.cores)});
    std::string bytes;
    for (const std::uint32_t word : cpld.words) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>(word >> shift & 0xFF);
        }
    }
    plan.files.push_back({"/dev/cpld", std::move(bytes)});
}

/// Which of the interfaces the in-band link uses is its driver's to tell.
void planInband(WorldPlan& plan, const InbandPart& inband) {
    if (!inband.slave.empty()) {
        plan.files.push_back({"/sys/kernel/inband/slave_if", inband.slave + "\n"});
    }
}

void planFont(WorldPlan& plan, const BoardParts& missing, const std::string& font) {
    if (missing.has(BoardPart::FontDirectory)) {
        return;
    }
    plan.directories.push_back(kFontDirectory);
    if (!missing.has(BoardPart::Font)) {
        plan.borrowed.push_back({font, kFontDirectory + "/Font.ttf"});
    }
}

}  // namespace

WorldPlan planWorld(const BoardDescription& board, const BoardParts& missing, const std::string& font,
                    const std::vector<ActingFile>& acting, const std::vector<ServedTree>& trees,
                    bool reportsRegisters) {
    WorldPlan plan;
    plan.covers = {
        {"/dev", kUsualNodes},
        {"/sys/bus", {}, {"avalon", "i2c", "w1", kRegisterSocket}},
        {"/sys/class", {}, {"gpio", "hwmon", "i2c-dev", "net"}},
        {"/sys/kernel", {}, {"inband"}},
        {"/tmp", {}, {"i2c"}},
        {"/opt", {}, {"pattern"}},
    };
    plan.directories = {"/tmp/i2c"};
    plan.hiddenDirectory = "/dev/.boardsim-acting";
    planFpga(plan, board, missing);
    planPanel(plan, board, missing);
    planFont(plan, missing, font);
    planI2c(plan, without(missing, board.i2c));
    if (board.inband && !missing.has(BoardPart::Inband)) {
        planInband(plan, *board.inband);
    }
    for (const ActingFile& file : acting) {
        plan.acting.push_back(file.path);
    }
    for (const ServedTree& tree : trees) {
        plan.trees.push_back(tree.path);
    }
    // The screen is what the board is for.
    plan.needsFuse = hasScreen(board, missing);
    if (board.cpld && !missing.has(BoardPart::Cpld)) {
        planCpld(plan, *board.cpld);
    }
    if (!missing.has(BoardPart::Log)) {
        plan.logSocket = "/dev/log";
    }
    if (reportsRegisters) {
        plan.trapSocket = "/dev/.boardsim-trap";
    }
    return plan;
}

}  // namespace boardsim
