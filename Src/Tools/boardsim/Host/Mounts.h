#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace boardsim {

/// Puts the calling process into mount namespace of its own, in which nothing that it mounts is seen outside
/// and everything that it mounted vanishes with its last process. As root that is all; as an ordinary user
/// (or as a root without CAP_SYS_ADMIN) it happens inside a new user namespace in which the caller is root.
///
/// @param alsoUnshare further CLONE_NEW… flags to unshare in the same step, 0 for none. With CLONE_NEWPID
///                    the caller's next child becomes process 1.
/// Must be called while the process has one thread.
/// @throws std::runtime_error when the kernel refuses; the text names what to allow.
/// Source: user_namespaces(7), mount_namespaces(7).
void enterPrivateMounts(int alsoUnshare = 0);

/// Says for the name of a directory entry whether it stays visible.
using KeepEntry = std::function<bool(std::string_view name)>;

/// Covers `directory` with an empty, writable tmpfs of the same mode in which those old entries that `keep`
/// chooses are bound back to their names. Entries that the caller cannot examine or bind (another user's
/// mount, say, or one whose server is dead) are left out. What is created in it later lives in memory only.
/// Needs enterPrivateMounts() before.
/// @throws std::runtime_error naming the path that could not be covered or bound and, where permission was
/// refused, what to allow.
void coverDirectory(const std::string& directory, const KeepEntry& keep);

/// Makes `target` show `source`, a file or a directory of any kind. A missing target is created, empty,
/// first.
/// @throws std::runtime_error naming both paths and, where permission was refused, what to allow.
void bindPath(const std::string& source, const std::string& target);

/// Predicates for coverDirectory.
bool keepEverything(std::string_view name);
bool keepNothing(std::string_view name);

}  // namespace boardsim
