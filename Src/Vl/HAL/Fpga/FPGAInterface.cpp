#include "Vl/HAL/Fpga/FPGAInterface.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdio>

#include "Vl/HAL/Fpga/CoreLayout.h"

namespace Valen::HAL {
namespace {

constexpr const char* kSyncCore = "*central_sync";
constexpr int kAnyVersion = -1;

}  // namespace

FPGAInterface::~FPGAInterface() {
    // Meant: the length is still "the whole file" here, which the kernel refuses to unmap. It is asked
    // directly: ThreadSanitizer's munmap() does not survive the question.
    syscall(SYS_munmap, base_, static_cast<std::size_t>(length_));
}

bool FPGAInterface::openDevice() {
    length_ = kWholeFile;
    std::array<char, 24> path;
    std::snprintf(path.data(), path.size(), "%s%s", simulation_ ? "/tmp/" : "/dev/", deviceName_);
    base_ = nullptr;
    wordCount_ = 0;
    node_ = Descriptor::open(path.data(), O_RDWR);
    if (!node_.isValid()) {
        return false;
    }
    const off_t size = lseek(node_.get(), 0, SEEK_END);
    lseek(node_.get(), 0, SEEK_SET);
    void* registers =
        mmap(nullptr, static_cast<std::size_t>(size), PROT_READ | PROT_WRITE, MAP_SHARED, node_.get(), 0);
    if (registers != MAP_FAILED) {
        base_ = static_cast<volatile std::uint32_t*>(registers);
        wordCount_ = static_cast<std::size_t>(size) / kWordSize;
    }
    return true;
}

bool FPGAInterface::loadCoreAddresses() {
    unsigned int address = 0;
    if (getPldCoreAddress(deviceName_, kSyncCore, &address, 1, kAnyVersion, kAnyVersion) != 1) {
        return false;
    }
    const auto registers = words(address);
    if (registers.empty()) {
        return false;
    }
    centralSync_ = registers.data();
    return true;
}

}  // namespace Valen::HAL
