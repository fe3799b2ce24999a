#pragma once

namespace Valen {

/// Opens "/dev/null" in place of those of standard input, output and error that the caller left closed: the
/// next file to be opened would take their numbers, and get what is printed. For the beginning of main().
void fillStandardDescriptors();

}  // namespace Valen
