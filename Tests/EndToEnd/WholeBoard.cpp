// A program for the virtual board that builds a whole board, "orca" or "hd24", and prints what each of its
// accessors answers, a line each: its name, whether it succeeded, and the value.
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Identity/HaldenSerial.h"
#include "Vl/Common/Identity/MACAddress.h"
#include "Vl/Common/Identity/SerialNo.h"
#include "Vl/Common/Identity/Version.h"
#include "Vl/Common/Log/LogImpl.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/CPLinkInterface.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Chips/ADVInterface.h"
#include "Vl/HAL/Chips/GenericEthernetPhy.h"
#include "Vl/HAL/Panel/OledPanelButtons.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace {

using namespace Valen;

void say(const char* name, bool succeeded, const std::string& value = {}) {
    std::printf("%s %s%s%s\n", name, succeeded ? "ok" : "failed", value.empty() ? "" : " ", value.c_str());
}

/// A number where 0 and above are a success.
void sayNumber(const char* name, int value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned int>(value));
    say(name, value >= 0, value >= 0 ? text : "");
}

template <typename Board>
using Getter = bool (Board::*)(int& celsius, int& limit);

void sayTemperature(OrcaInterface& board, const char* name, Getter<OrcaInterface> get) {
    int celsius = 0;
    int limit = 0;
    const bool succeeded = (board.*get)(celsius, limit);
    say(name, succeeded, (succeeded ? std::to_string(celsius) + " " : "") + "of " + std::to_string(limit));
}

void sayFpgaTemperature(OrcaInterface& board, const char* name, int which) {
    int celsius = 0;
    int limit = 0;
    const bool succeeded = board.getFPGATemperature(which, celsius, limit);
    say(name, succeeded, (succeeded ? std::to_string(celsius) + " " : "") + "of " + std::to_string(limit));
}

void sayPhy(const char* name, HAL::GenericEthernetPhy& phy) {
    sayNumber(name, phy.getPhyId1());
}

void sayPanel(CPInterface& board) {
    const auto panel = board.getOledPanel(0);
    say("panel", panel->initOk());
    say("screen", panel->setState(OledPanelInterface::kFrameShown));
}

/// A value that has a text.
template <typename Value>
void sayText(const char* name, bool succeeded, const Value& value) {
    say(name, succeeded, succeeded ? value.toString().c_str() : "");
}

void sayIdentity(CPInterface& board) {
    MACAddress mac;
    Version version;
    HaldenSerial serial;
    SerialNo chip;
    sayText("mac", board.getMAC(BinaryData::SecondMac, mac), mac);
    sayText("card-id", board.getCardID(version, serial), version);
    say("rom", board.checkROMData());
    sayText("cpld", board.getCPLDVersion(version) == 1, version);
    say("fpga-version", board.getFPGAVersion(version) == 1);
    sayText("card-serial", board.getCardSerial(chip), chip);
}

void sayHwmon(const char* name, therm_entry entry) {
    int number = -1;
    CPInterface::openTherm(&entry, &number, 1);
    const Descriptor sensor(number);
    int millidegrees = 0;
    const bool succeeded = CPInterface::gettemp(millidegrees, number);
    say(name, succeeded, succeeded ? std::to_string(millidegrees) : "");
}

void sayLinks(CPLinkInterface& link) {
    say("carrier-0", link.isCarrierUp(0));
    say("carrier-1", link.isCarrierUp(1));
    say("link-0", link.EthLinkState(0) > 0, std::to_string(link.EthLinkState(0)));
    say("link-1", link.EthLinkState(1) > 0, std::to_string(link.EthLinkState(1)));
    sayNumber("fibre-0", link.getFiberLength(0));
    say("pattern-lane", link.EnablePatternOnLane(CPLinkInterface::PATTERN_ON, 0));
}

void sayCommon(CPInterface& board, CPLinkInterface& link) {
    say("sync-word", board.getSyncWord().first);
    sayPanel(board);
    sayPhy("phy-0", *board.getPhy(0));
    sayPhy("phy-1", *board.getPhy(1));
    sayLinks(link);
    sayIdentity(board);
    sayHwmon("hwmon0/temp1", {.hwmon = 0, .sensor = 1});
}

void sayExpander(const char* name, Sx1509b* chip) {
    sayNumber(name, chip->getInputA());
}

void sayVersions(const VersionsRecord& versions) {
    say("versions", versions.serial != 0,
        std::to_string(versions.serial) + " " + versions.serialText + " " +
            std::to_string(versions.pcbVersion) + " " + std::to_string(versions.pcbRevision));
}

void orca() {
    CPLinkInterface link;
    OrcaInterface board(&link);
    sayCommon(board, link);
    sayHwmon("hwmon0/temp2", {.hwmon = 0, .sensor = 2});
    sayHwmon("hwmon1/temp1", {.hwmon = 1, .sensor = 1});
    sayPhy("config-phy-0", *board.getConfigEthPhy(0));
    sayFpgaTemperature(board, "fpga", 0);
    sayFpgaTemperature(board, "tile0", 1);
    sayFpgaTemperature(board, "tile1", 2);
    sayTemperature(board, "sdi", &OrcaInterface::getSDITemperature);
    sayTemperature(board, "fan", &OrcaInterface::getFanTemperature);
    sayTemperature(board, "oled", &OrcaInterface::getOledTemperature);
    sayTemperature(board, "eth", &OrcaInterface::getETHTemperature);
    sayExpander("qsfp0_0", board.getQsfpIo(0, 0));
    sayExpander("qsfp0_1", board.getQsfpIo(0, 1));
    sayExpander("qsfp1_0", board.getQsfpIo(1, 0));
    sayExpander("qsfp1_1", board.getQsfpIo(1, 1));
    sayExpander("sync", board.getSyncIo());
    say("psu-led", board.setPsuModuledLed(0, OrcaInterface::PinHigh));
    say("reset", board.getResetIOs()->resetFlipFlops());
    sayNumber("video", board.getADV()->getReg(0));
    sayVersions(board.getVersions());
    say("power-cycle", board.requestPowerCycleBoot());
}

void hd24() {
    CPLinkInterface link;
    HD24Interface board(&link);
    sayCommon(board, link);
    sayPhy("config-phy-0", *board.getConfigEthPhy(0));
    sayPhy("config-phy-1", *board.getConfigEthPhy(1));
    int celsius = 0;
    const bool succeeded = board.getFPGATemperature(celsius);
    say("fpga", succeeded, succeeded ? std::to_string(celsius) : "");
    hd24_misc_pio_ctrl misc;
    say("misc", board.readMiscPio(misc));
    const auto video = board.getADV();
    say("video", video != nullptr && video->setReg(0x10, 0x11) == 1);
}

/// The board alone, built and taken down.
void construct() {
    const OrcaInterface board(nullptr);
}

struct Word {
    const char* name;
    void (*act)();
};

constexpr Word kWords[] = {{"orca", orca}, {"hd24", hd24}, {"construct", construct}};

}  // namespace

int main(int argc, char** argv) {
    Log::vlLog = std::make_unique<Log::LogImpl>();
    Log::vlLog->LogInit();
    for (int i = 1; i < argc; ++i) {
        for (const Word& word : kWords) {
            if (std::strcmp(word.name, argv[i]) == 0) {
                word.act();
            }
        }
    }
    Log::vlLog.reset();
}
