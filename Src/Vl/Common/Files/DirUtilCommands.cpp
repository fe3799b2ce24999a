// DirUtil: what the shell and the system's commands do for it.
#include <unistd.h>

#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Log/BufBase.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {
namespace {

/// Formatting without memory gives a text about that, which is no command.
bool isCommand(const SimpleString& text) {
    return text.hasMemoryAllocated();
}

void logCommand(const SimpleString& command) {
    using Log::SeverityLevel::DEBUG;
    if (Log::isWanted(Enums::OriginKey::Firmware, DEBUG)) {
        Log::BufBase text;
        text.put(text.put(text.begin(), "system: "), command.c_str());
        Log::vlLog->Log(Enums::OriginKey::Firmware, DEBUG, text);
    }
}

}  // namespace

int DirUtil::SystemExec(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const SimpleString command = SimpleString::FormatWith_va_list(format, arguments);
    va_end(arguments);
    logCommand(command);
    return isCommand(command) ? SystemExecPlain(command.c_str()) : -1;
}

int DirUtil::SystemExecPlain(const char* command) {
    return Exec("sh", "-c", command, nullptr);
}

pid_t DirUtil::execNonBlocking(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const pid_t pid = execNonBlocking_va_list(format, arguments);
    va_end(arguments);
    return pid;
}

pid_t DirUtil::execNonBlocking_va_list(const char* format, va_list arguments) {
    const SimpleString command = SimpleString::FormatWith_va_list(format, arguments);
    VL_LOG(Firmware, DEBUG, "SH COMMANDLINE: %s", command.c_str());
    if (!isCommand(command)) {
        return -1;
    }
    return execNonBlockingEnvironment(const_cast<const char**>(environ), "sh", "-c", command.c_str(),
                                      nullptr);
}

bool DirUtil::FilesDifferent(const char* first, const char* second) {
    return Exec("diff", "-q", first, second, nullptr) != 0;
}

bool DirUtil::RemoveDir(const char* path) {
    return Exec("rm", "-Rf", path, nullptr) == 0;
}

bool DirUtil::deleteFilesUsingWildcards(const char* pattern) {
    return SystemExec("rm -f %s", pattern) == 0;
}

bool DirUtil::deleteFilesBeginningWith(const char* prefix) {
    return SystemExec("rm -f %s*", prefix) == 0;
}

int DirUtil::Move(const char* from, const char* to) {
    return SystemExec("mv \"%s\" \"%s\"", from, to);
}

}  // namespace Valen
