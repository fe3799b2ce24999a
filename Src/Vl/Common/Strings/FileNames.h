#pragma once

#include <string>

namespace Valen {

// Texts are never null unless said. Any thread may use these; nothing touches the file system.

/// What the names of temporary files begin with.
const char* GetTemporaryFilePrefix();

/// The name behind the last '/' of `path`, or behind the last '\' when it has no '/', made short for
/// messages: the first ".cpp" in it becomes "C" and the first ".h" becomes "H" ("Src/Thread.cpp" gives
/// "ThreadC"). A null path gives an empty text. The second argument takes the __LINE__ that stands beside
/// __FILE__; the name does not depend on it.
std::string extractFileName(const char* path, int line);

/// Makes `out` the text "`directory`/`name`".
void MakePath(const char* directory, const char* name, std::string& out);

}  // namespace Valen
