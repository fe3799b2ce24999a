// A program that uses the drivers of the network links and of the sync block as its words say, one after the
// other, and prints what they answer.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Vl/Common/Identity/JenkinsChecksum.h"
#include "Vl/Common/Log/LogImpl.h"
#include "Vl/HAL/Board/CPLinkInterface.h"
#include "Vl/HAL/Board/HD24Interface.h"

namespace {

using namespace Valen;

int number(const std::string& text) {
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 0));
}

const char* yes(bool is) {
    return is ? "yes" : "no";
}

CPLinkInterface& link() {
    static CPLinkInterface only;
    return only;
}

/// Both variants build on it, and both boards have what it wants.
CPInterface& board() {
    static HD24Interface only(&link());
    return only;
}

Vitc readVitc() {
    Vitc time;
    if (!board().getVitcData(time)) {
        std::printf("no time code\n");
    }
    return time;
}

/// Seconds, milliseconds, frames and user bits.
void print(const Vitc& time) {
    std::printf("%u.%03u frame %u bits %02x%02x%02x%02x\n", time.seconds, time.milliseconds, time.frames,
                unsigned{time.userBits[0]}, unsigned{time.userBits[1]}, unsigned{time.userBits[2]},
                unsigned{time.userBits[3]});
}

void tellLink(const std::string& port) {
    std::printf("eth%s carrier %s state %d\n", port.c_str(), yes(link().isCarrierUp(number(port))),
                link().EthLinkState(number(port)));
}

void awaitCarrierDown(const std::string& port) {
    while (link().isCarrierUp(number(port))) {
    }
    tellLink(port);
}

void switchLane(const std::string& lane, CPLinkInterface::PATTERN_ENABLE how) {
    std::printf("lane %s: %s\n", lane.c_str(), yes(link().EnablePatternOnLane(how, number(lane))));
}

void send(const std::string& file, bool corrupt) {
    JenkinsChecksum checksum;
    const int result = link().sendPattern(file.c_str(), checksum, corrupt);
    std::printf("sent: %d, %u words, checksum 0x%08x\n", result, checksum.count, checksum.hash);
}

void tellSync() {
    std::printf("id %014llx master %014llx is master %s sync word %s\n",
                static_cast<unsigned long long>(board().getSyncID()),
                static_cast<unsigned long long>(board().getSyncMaster()), yes(board().isSyncMaster()),
                yes(board().getSyncWord().first));
}

/// "86399,960": seconds of the day and milliseconds, with user bits; what is read at once is told.
void setVitc(const std::string& text) {
    Vitc time;
    time.seconds = static_cast<std::uint32_t>(number(text));
    time.milliseconds = static_cast<std::uint32_t>(number(text.substr(text.find(',') + 1)));
    time.userBits = {0x12, 0x34, 0x56, 0x78};
    std::printf("set %d: ", board().setVitcData(time));
    print(readVitc());
}

/// Reads until the time code has moved so many times. A torn one would be a step of a minute or a day.
void follow(const std::string& steps) {
    constexpr long kDay = 24L * 60 * 60 * 1000;
    long largest = 0;
    Vitc before = readVitc();
    for (int i = 0; i < number(steps);) {
        const Vitc now = readVitc();
        if (now == before) {
            continue;
        }
        const long milliseconds = 1000L * now.seconds + now.milliseconds;
        const long earlier = 1000L * before.seconds + before.milliseconds;
        largest = std::max(largest, (milliseconds - earlier + kDay) % kDay);
        before = now;
        ++i;
    }
    std::printf("steps below ten seconds: %s\n", yes(largest < 10000));
}

const std::map<std::string, std::function<void(const std::string&)>> kWords{
    {"link", tellLink},
    {"await-down", awaitCarrierDown},
    {"lane-on", [](const std::string& lane) { switchLane(lane, CPLinkInterface::PATTERN_ON); }},
    {"lane-off", [](const std::string& lane) { switchLane(lane, CPLinkInterface::PATTERN_OFF); }},
    {"shutdown", [](const std::string&) { std::printf("shutdown: %d\n", link().InbandEmergencyShutdown()); }},
    {"fibre",
     [](const std::string& port) { std::printf("fibre: %d\n", link().getFiberLength(number(port))); }},
    {"send", [](const std::string& file) { send(file, false); }},
    {"corrupt", [](const std::string& file) { send(file, true); }},
    {"sync", [](const std::string&) { tellSync(); }},
    {"config",
     [](const std::string& id) {
         std::printf("config: %s\n", yes(board().setSyncNetConfigId(static_cast<NetConfigId>(number(id)))));
     }},
    {"vitc", [](const std::string&) { print(readVitc()); }},
    {"set-vitc", setVitc},
    {"follow", follow},
};

}  // namespace

int main(int argc, char** argv) {
    Log::vlLog = std::make_unique<Log::LogImpl>(Log::SeverityLevel::DEBUG);
    Log::vlLog->LogInit();
    for (const std::string& word : std::vector<std::string>(argv + 1, argv + argc)) {
        const std::size_t colon = std::min(word.find(':'), word.size());
        kWords.at(word.substr(0, colon))(colon < word.size() ? word.substr(colon + 1) : "");
        std::fflush(stdout);
    }
}
