#pragma once

#include <sys/types.h>

#include <cstdarg>
#include <cstdint>
#include <ctime>
#include <functional>
#include <string>

namespace Valen {

class SimpleString;

/// Files, directories and processes: what the firmware asks of the file system, and how it runs other
/// programs.
///
/// Paths are zero-terminated and follow symbolic links unless said. Nothing throws; trouble is logged under
/// "Firmware" and returned as false, -1 or a null result, and what was done before it stays. There is no
/// state: any thread may call anything, and calls block as the underlying system calls do.
///
/// Some functions hand their text to a shell, which gives blanks, quotes, semicolons and wildcards in it a
/// meaning. They say so; never give those a text from outside. All others pass every character unharmed.
///
/// Source of the facts: the manual pages named with each function.
class DirUtil {
public:
    // -- File tests ----------------------------------------------------------------------------------

    /// Whether something of that name exists (access(2), F_OK).
    static bool FileExists(const char* path);
    /// Whether the path names a directory (stat(2)), readable or not.
    static bool directoryExists(const char* path);
    /// Whether the path can be opened as a directory (opendir(3)).
    static bool IsDir(const char* path);
    /// Whether the process may write the file (access(2), W_OK).
    static bool FileWritable(const char* path);
    /// Whether the name itself is a symbolic link (lstat(2)).
    static bool isLink(const char* path);
    /// @return the time of the last modification in seconds since the epoch; 0 when stat(2) fails.
    static std::time_t FileLastModified(const char* path);
    /// @return the size in bytes, -1 when stat(2) fails.
    static std::int64_t FileSize(const char* path);
    /// Whether both exist and have the same inode number. Their file systems are not compared.
    static bool SameFile(const char* first, const char* second);
    /// Whether diff(1) finds the files different or fails; it says on standard output that they differ.
    /// Waits for it.
    static bool FilesDifferent(const char* first, const char* second);

    // -- Small file operations -----------------------------------------------------------------------

    /// Gives the file `from` the name `to`, replacing what has that name: rename(2).
    /// @return 0; -1 on failure, with errno set.
    static int FileRename(const char* from, const char* to);
    /// Removes a file, a link or an empty directory: remove(3). @return whether it did.
    static bool FileDelete(const char* path);
    /// Removes the path with all that is below it; nothing to remove is a success. Waits for rm(1).
    static bool RemoveDir(const char* path);
    /// Makes the file exist: a missing one is created, empty, readable and writable for its owner only.
    /// @return whether it exists now.
    static bool EnsureFileExists(const char* path);
    /// Waits until the file's data has reached its medium: fdatasync(2), whose own failures are not reported.
    /// @return close(2)'s result; the negative result of open(2) when the file cannot be read.
    static int fSync(const char* path);
    /// Reads the text of a symbolic link; links of procfs, which keep the length of their text for
    /// themselves, cannot be read. @return false, with `target` as it was, when it fails.
    static bool ReadLink(const char* path, SimpleString& target);
    /// Makes `link` a symbolic link to `target` (which need not exist), expressed relative to the directory
    /// of `link` (which must). Relative paths count from the working directory, both. @return false when it
    /// fails, also when something is named `link` already.
    static bool RelativeSymlink(const char* target, const char* link);
    /// Removes what matches; the shell expands `pattern`. No match is a success. Waits for it.
    static bool deleteFilesUsingWildcards(const char* pattern);
    /// Removes every file whose path begins with `prefix`, a text for the shell. Waits for it.
    static bool deleteFilesBeginningWith(const char* prefix);
    /// Moves a file or directory with mv(1), across file systems too. The paths stand between double quotes
    /// in a text for the shell. Waits for it. @return as SystemExec.
    static int Move(const char* from, const char* to);

    // -- Paths ---------------------------------------------------------------------------------------

    /// @return the part of `path` behind its last '/', all of it when there is none.
    static const char* getFileNameWithoutPath(const char* path);
    /// Compares the names without their paths as strcmp(3) does.
    static int CmpBaseNames(const char* first, const char* second);
    /// Strips every '/' at the end, in place; "/" becomes empty.
    static void RemoveTrailingSlashes(char* path);
    /// Makes every run of '/' a single one, in place.
    static void RemoveDoubleSlashes(char* path);
    /// @return the working directory; empty when it is gone.
    static std::string GetCurrentDirectoryPath();

    // -- Directories and copying ---------------------------------------------------------------------

    /// Creates every missing directory along `path`, with mode 0755 less the process's mask.
    /// @return whether `path` can now be opened as a directory.
    static bool CreateDirPath(const char* path);
    /// Copies the contents and mode bits of one file. An existing `to` is replaced in place; a copy that
    /// fails halfway stays. Files of the same inode number are refused, on different file systems too.
    static bool Copy(const char* from, const char* to);
    /// Copies the directory `from` with all that is below it: `to` becomes its copy, or is added to. Links
    /// are copied as links; modes are kept. It ends at the first failure, among them devices, sockets and
    /// pipes, and a `to` inside `from`.
    /// @param progress called from this thread with the percentage of directorySize() done: 0 at first, each
    ///                 value once, rising, after whole files, and 100 at the end of a success. May be empty.
    ///                 What it throws passes through.
    static bool recursiveCopyWithProgress(const char* from, const char* to,
                                          const std::function<void(int)>& progress);
    /// @return the sum of the sizes in bytes of all regular files in and below a directory, each counted as
    ///         often as it has names there, links not followed; INT64_MAX for any larger sum; -1 when not all
    ///         of it can be listed.
    static std::int64_t directorySize(const char* path);
    /// Reads a whole file of 1 to UINT_MAX bytes.
    /// @param buffer receives a block that the caller frees with free(3).
    /// @param size receives its size in bytes.
    /// @return false on failure, with both left as they were.
    static bool readFileToBuffer(const std::string& path, unsigned char** buffer, unsigned int* size);

    // -- Processes -----------------------------------------------------------------------------------
    //
    // Programs are started by vfork(2), which holds the calling thread until the program runs and costs the
    // same however much memory this process has. They are searched for in this process's PATH, inherit what
    // is not close-on-exec, and see this process's environment unless they are given another.

    /// Runs `file` with the following `const char*` arguments up to a null pointer, and waits for it. No
    /// shell is involved: arguments reach the program as they are.
    /// @return the exit status, 0 to 255: 255 also when the program cannot be run, 0 also when a signal
    ///         killed it; -1 when no process could be started or waited for.
    [[gnu::sentinel]] static int Exec(const char* file, ...);
    /// Formats a command line for the shell as printf(3) does, runs it and waits for it.
    /// @return as Exec, of the shell; -1 without memory for the command line.
    [[gnu::format(printf, 1, 2)]] static int SystemExec(const char* format, ...);
    /// Has the shell run `command` as it is, and waits for it. @return as Exec, of the shell.
    static int SystemExecPlain(const char* command);

    /// Formats a command line for the shell and starts it without waiting.
    /// @return the shell's pid, -1 when it could not be started. The caller owns the child and collects it
    ///         with waitForProcess or terminateProcess.
    [[gnu::format(printf, 1, 2)]] static pid_t execNonBlocking(const char* format, ...);
    [[gnu::format(printf, 1, 0)]] static pid_t execNonBlocking_va_list(const char* format, va_list arguments);
    /// Starts `file` as Exec does, without waiting and without a shell, in the null-terminated `environment`.
    /// @return the pid, -1 when no process could be started; one that cannot be run is a child that ends with
    ///         255. The caller owns the child and collects it with waitForProcess or terminateProcess.
    [[gnu::sentinel]] static pid_t execNonBlockingEnvironment(const char** environment, const char* file,
                                                              ...);

    /// Sends SIGTERM, or with `force` SIGKILL, and waits for the child to end, however long that takes.
    /// @return as waitForProcess.
    static int terminateProcess(int pid, bool force);
    /// Sends SIGTERM, or with `force` SIGKILL, without waiting. @return whether the signal was sent.
    static bool killProcess(int pid, bool force);
    /// Waits for a child to end. @return its exit status, 0 when a signal killed it; -1 when there is no such
    /// child; a `pid` below 1 as it is.
    static int waitForProcess(int pid);
};

}  // namespace Valen
