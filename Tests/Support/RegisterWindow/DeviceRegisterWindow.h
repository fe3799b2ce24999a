#pragma once

#include <cstddef>

#include "Tests/Support/RegisterWindow/RecordedRegisters.h"

namespace support {

/// The register device "/dev/fpga" of a test's private world: the code under test opens and maps it by
/// itself, and every access through such a mapping is recorded. One at a time; the test program links
/// register_window_mmap, which replaces mmap and munmap, and has a /dev of its own.
class DeviceRegisterWindow : public RecordedRegisters {
public:
    static constexpr std::size_t kDefaultLength = 0x10000;

    /// Creates the device file; all registers are 0. @param length of the file in bytes
    explicit DeviceRegisterWindow(std::size_t length = kDefaultLength);

    /// Removes the device file. A mapping that the code under test has left behind is dead from now on: to
    /// access it is a crash.
    ~DeviceRegisterWindow();
};

}  // namespace support
