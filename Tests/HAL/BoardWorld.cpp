#include "Tests/HAL/BoardWorld.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include "Vl/Common/Log/LogImpl.h"

using Valen::Log::vlLog;

BoardWorld::BoardWorld() {
    vlLog = std::make_unique<Valen::Log::LogImpl>();
    vlLog->LogInit();
    syslog.lines();
}

BoardWorld::~BoardWorld() {
    vlLog.reset();
}

void BoardWorld::logEverything() {
    logUpTo(Valen::Log::SeverityLevel::RAMFILE);
}

void BoardWorld::logUpTo(Valen::Log::SeverityLevel::SeverityLevel_T severity) {
    vlLog->setGlobalComponentSeverity(severity);
}

void BoardWorld::writeLayout(const std::string& device, std::string_view bytes) {
    support::PrivateWorld::write("/sys/bus/avalon/devices/" + device + "/layout", bytes);
}

int BoardWorld::descriptorsOn(const std::string& path) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;  // the listing's own descriptor
        count += std::filesystem::read_symlink(entry.path(), gone) == path ? 1 : 0;
    }
    return count;
}
