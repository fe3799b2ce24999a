// A small daemon on the runtime support: it logs to syslog, works in a watched thread once a period, keeps a
// status record in a file, and ends cleanly on SIGTERM.
//
//     daemon STATUSFILE [PERIOD_MS]
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Files/Errno.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogImpl.h"
#include "Vl/Common/Streams/OutputStream.h"
#include "Vl/Common/Threads/Thread.h"

namespace {

constexpr std::uint16_t kRecordVersion = 1;
constexpr int kDefaultPeriodMs = 1000;
constexpr timespec kSupervisionInterval{1, 0};

/// Version, process, number of runs, state. The file is replaced in one step: a reader never sees half a
/// record.
void writeStatus(const std::string& path, std::uint32_t runs, const char* state) {
    Valen::OutputStream record(64);
    record.putUInt16(kRecordVersion);
    record.putUInt32(static_cast<std::uint32_t>(getpid()));
    record.putUInt32(runs);
    record.putString(state);

    const std::string fresh = path + ".new";
    const Valen::Descriptor file(::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    if (!file.isValid() || !Valen::writeExact(file.get(), record.str()) ||
        Valen::DirUtil::FileRename(fresh.c_str(), path.c_str()) != 0) {
        VL_LOG(Firmware, ERROR, "cannot write %s: %s", path.c_str(), Valen::errnoText());
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: daemon STATUSFILE [PERIOD_MS]\n", stderr);
        return EXIT_FAILURE;
    }
    const std::string path = argv[1];
    const int periodMs = argc > 2 ? std::atoi(argv[2]) : kDefaultPeriodMs;

    // Blocked before any thread starts, so that the request to end reaches only the wait below.
    sigset_t endRequest;
    sigemptyset(&endRequest);
    sigaddset(&endRequest, SIGTERM);
    sigprocmask(SIG_BLOCK, &endRequest, nullptr);

    Valen::Log::vlLog = std::make_unique<Valen::Log::LogImpl>();
    Valen::Log::vlLog->LogInit();
    std::uint32_t runs = 0;  // the worker's, until it is joined
    Valen::Thread worker(
        Enums::OriginKey::Firmware, [&] { writeStatus(path, ++runs, "working"); }, periodMs);
    if (worker.start(false, 0) != 0) {
        VL_LOG(Firmware, ERROR, "cannot start the worker");
        return EXIT_FAILURE;
    }
    while (sigtimedwait(&endRequest, nullptr, &kSupervisionInterval) != SIGTERM) {
        Valen::Thread::handleDeadlockedThreads();
    }
    worker.quitAndJoin();
    writeStatus(path, runs, "ended");
    VL_LOG(Firmware, SERVICE, "ended after %u runs", runs);
    Valen::Log::vlLog.reset();
    return EXIT_SUCCESS;
}
