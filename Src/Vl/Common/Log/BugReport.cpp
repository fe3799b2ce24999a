#include "Vl/Common/Log/BugReport.h"

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <string_view>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Threads/ThreadRecord.h"

namespace Valen {
namespace {

constexpr const char* kFile = "/opt/fw/log/bugs.txt";
constexpr const char* kOlderFile = "/opt/fw/log/bugs2.txt";
constexpr off_t kLargestSize = 204800;
constexpr std::string_view kRelaunch = "=======> devd relaunch <======\n";

std::atomic<bool> relaunchWritten{false};

Descriptor openAtEnd() {
    // Appending, so that reports that are written at once do not overwrite each other.
    return Descriptor(::open(kFile, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644));
}

Descriptor openBugFile() {
    Descriptor file = openAtEnd();
    if (file.isValid() && lseek(file.get(), 0, SEEK_END) > kLargestSize) {
        file.close();
        DirUtil::FileRename(kFile, kOlderFile);
        file = openAtEnd();
    }
    return file;
}

/// What a printf that returned `count` has left in `buffer`.
std::string_view written(const std::array<char, 2048>& buffer, int count) {
    const int longest = static_cast<int>(buffer.size()) - 1;
    return {buffer.data(), static_cast<std::size_t>(std::clamp(count, 0, longest))};
}

}  // namespace

void prepareBugReports() {
    [[maybe_unused]] static const bool prepared = [] {
        tzset();
        void* frame = nullptr;
        return backtrace(&frame, 1) > 0;
    }();
}

int report_bug(bool withBacktrace, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = vreport_bug(withBacktrace, format, arguments);
    va_end(arguments);
    return result;
}

int report_bug(const char* text, bool withBacktrace) {
    return report_bug(withBacktrace, "%s", text);
}

int vreport_bug(bool withBacktrace, const char* format, va_list arguments) {
    Descriptor file = openBugFile();
    if (!file.isValid()) {
        return file.get();
    }
    if (!relaunchWritten.exchange(true)) {
        writeExact(file.get(), kRelaunch);
    }
    std::array<char, 2048> buffer;
    writeExact(file.get(), written(buffer, report_bug_log_time(buffer.data(), buffer.size())));
    writeExact(file.get(), written(buffer, std::vsnprintf(buffer.data(), buffer.size(), format, arguments)));
    writeExact(file.get(), "\n");
    if (withBacktrace) {
        BacktraceToFile(file.get());
    }
    fdatasync(file.get());
    return file.close();
}

int report_bug_log_time(char* destination, std::size_t size) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return std::snprintf(destination, size, "====> %02d.%02d. %02d:%02d:%02d (%s %d) ", local.tm_mday,
                         local.tm_mon + 1, local.tm_hour, local.tm_min, local.tm_sec,
                         ThreadRecord::currentName(), gettid());
}

void BacktraceToFile(int fd) {
    std::array<void*, 50> addresses;
    const int count = backtrace(addresses.data(), static_cast<int>(addresses.size()));
    backtrace_symbols_fd(addresses.data(), count, fd);
}

}  // namespace Valen
