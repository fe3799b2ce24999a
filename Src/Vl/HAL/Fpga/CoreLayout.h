#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <span>
#include <vector>

/// Where the cores (register blocks) of the board's programmable devices sit.
///
/// The kernel driver of the on-board bus lists the cores of every programmable device in a file
/// "/sys/bus/avalon/devices/<device>/layout": records of a zero-terminated name, a big-endian 16-bit count of
/// words, and that many big-endian 32-bit words. Word 0 is the core's version, word 1 the address of its
/// first registers, further words further spans or instances.
///
/// A wanted name may hold one '*', which stands for zero or more characters. The first matching record
/// counts. Version bounds are compared as signed numbers; a negative bound admits everything.
///
/// Nothing is cached; any thread may call any of these functions. Layouts of any content are safe to read.
///
/// Results: 1 success; -4 the version is out of bounds; -5 no such core, or the layout ends early; -7 the
/// words lie beyond the record; -8 the layout cannot be opened. What was in the way is logged (origin
/// CPCardInterface): -8 as an error, the others at DEBUG, a missing core not at all.
namespace Valen::HAL {

/// Cores are aligned to 64 bytes; the low six bits of an address word are not address.
inline constexpr unsigned int kCoreAddressMask = ~0x3FU;

/// Reads the layout of a device ("fpga", "cpld"). @return nothing, with a line in the log, when it cannot be
/// opened; what cannot be read of it is missing.
std::optional<std::vector<std::byte>> readLayout(const char* device);

/// Reads words n to n+count-1 of a core, in host byte order, from where the open `layout` stands, or from a
/// layout in memory.
/// @param out room for `count` words; after a failure some of them may have been written.
int getPldCoreInfo(FILE* layout, const char* name, unsigned int* out, int n, int count, int minVersion,
                   int maxVersion);
int getPldCoreInfo(std::span<const std::byte> layout, const char* name, unsigned int* out, int n, int count,
                   int minVersion, int maxVersion);

/// Reads word n of a core of `device`.
int getPldCoreInfo(const char* device, const char* name, unsigned int* out, int n, int minVersion,
                   int maxVersion);

/// Reads word n of a core of `device` as an address. The low six bits of *out are cleared on failure too,
/// when it holds whatever the caller left there: look at the result, not at *out.
int getPldCoreAddress(const char* device, const char* name, unsigned int* out, int n, int minVersion,
                      int maxVersion);

/// @return word n as an address, zero-extended, or -1 on any failure.
long getPldCoreAddress(const char* device, const char* name, int n, int minVersion, int maxVersion);

}  // namespace Valen::HAL
