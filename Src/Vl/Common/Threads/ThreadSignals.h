#pragma once

namespace Valen {

/// Catches the two signals of every Thread, for the whole process. SIGUSR1 has no effect but that a blocking
/// system call returns with EINTR. SIGHUP comes from the watchdog: the thread that receives it writes its own
/// backtrace to the bug file, and a line to syslog.
void installThreadSignalHandler();

}  // namespace Valen
