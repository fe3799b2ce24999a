#pragma once

#include <cstdarg>
#include <cstddef>

/// The bug file "/opt/fw/log/bugs.txt": messages that signal faults, such as a thread that will not quit. It
/// is always on, whatever the log's thresholds are, and keeps one older generation, "bugs2.txt".
///
/// Each report opens, writes and closes the file by itself. Any thread of any process may report at any time:
/// nothing is locked. Reports never overwrite each other, but the pieces of two (prefix, message, backtrace)
/// may alternate, and two that find the file too large at the same moment may both move it, which costs the
/// older generation. A report blocks until its bytes are on the disk. Nothing throws and nothing is logged;
/// errno may change.
///
/// A signal handler may report too, which is how a thread that hangs shows its backtrace, once the process
/// has called prepareBugReports(). One step is not async-signal-safe by the book: localtime_r(3) takes the
/// lock of the time zone, so a handler that interrupts another conversion in its own thread may wait forever.
namespace Valen {

/// Does ahead what the first report of a process would allocate memory for, which a signal handler must not:
/// reads the time zone and loads the unwinder. Any thread may call it, also more than once.
void prepareBugReports();

/// Writes one report: on the first of this process "=======> devd relaunch <======" on a line of its own,
/// then the prefix of report_bug_log_time() and the message on one line, then the backtrace of the calling
/// thread if asked for. `format` is printf's; a message is cut at 2047 characters. A file that has grown
/// beyond 204,800 bytes becomes "/opt/fw/log/bugs2.txt" first, in place of the older one.
/// @return what close(2) returned, 0 as a rule; when the file cannot be opened -1 with errno set, and nothing
/// was written.
[[gnu::format(printf, 2, 3)]] int report_bug(bool withBacktrace, const char* format, ...);
[[gnu::format(printf, 2, 0)]] int vreport_bug(bool withBacktrace, const char* format, va_list arguments);
/// The same with a finished text, in which a percent sign is a character as any other.
int report_bug(const char* text, bool withBacktrace);

/// Writes "====> day.month. hour:minute:second (thread id) " in local time, with the name of the calling
/// thread ("main" for one that is no Thread) and its kernel id. At most `size` bytes are written, the last of
/// them zero; nothing when `size` is 0.
/// @return the length of the whole prefix, as snprintf(3) counts.
int report_bug_log_time(char* destination, std::size_t size);

/// Writes the return addresses of the calling thread, 50 at most and the innermost first, each symbolised on
/// a line of its own. Only exported symbols have names. Allocates nothing but what the first backtrace(3) of
/// the process does.
void BacktraceToFile(int fd);

}  // namespace Valen
