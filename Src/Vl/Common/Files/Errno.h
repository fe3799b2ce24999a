#pragma once

#include <cerrno>

namespace Valen {

/// An error number in words ("No such file or directory"), as log lines say it. The text is valid until the
/// calling thread asks again; any thread may ask.
const char* errnoText(int error = errno);

}  // namespace Valen
