#pragma once

#include <sys/types.h>

#include <cstddef>
#include <span>
#include <string_view>

namespace Valen {

/// Reads until `bytes` is full, the file ends or an error comes; interrupted and short reads go on. Blocks as
/// read(2) does.
/// @return the number of bytes read, less than asked for at the end of the file; -1 on an error,
///         with errno set.
ssize_t readExact(int descriptor, std::span<std::byte> bytes);

/// Writes until all of `bytes` is written, the file takes no more or an error comes; interrupted and short
/// writes go on. Blocks as write(2) does.
/// @return the number of bytes written; -1 on an error, with errno set; a part may have been written.
ssize_t writeCounting(int descriptor, std::span<const std::byte> bytes);

/// Writes all of `text`; interrupted and short writes go on. Blocks as write(2) does.
/// @return false on an error, with errno set (EIO for a device that takes nothing); a part may have
///         been written.
bool writeExact(int descriptor, std::string_view text);

}  // namespace Valen
