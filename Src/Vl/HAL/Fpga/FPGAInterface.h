#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "Vl/Common/Files/Descriptor.h"

namespace Valen::HAL {

/// The register space of the main FPGA, mapped from its device node "/dev/fpga".
/// Owned by the control-processor interface; opened once while that is built, then only read. Register
/// accesses take no lock; each is one volatile 32-bit load or store. Addresses are byte offsets into the
/// register space.
class FPGAInterface {
public:
    /// The FPGA's name among the devices on the on-board bus and among the device nodes.
    static constexpr const char* device = "fpga";

    FPGAInterface() = default;
    FPGAInterface(const FPGAInterface&) = delete;
    FPGAInterface& operator=(const FPGAInterface&) = delete;
    /// Closes the node. The registers stay mapped: what points to them is valid until the process ends.
    ~FPGAInterface();

    /// Makes openDevice() look for the node below "/tmp/" instead of "/dev/".
    void setSimulation(bool simulated) { simulation_ = simulated; }

    /// Opens the node and maps all of it; an earlier descriptor is closed.
    /// @return false when the node cannot be opened. A mapping that fails does not make it false: it shows
    ///         in that words() stays empty.
    bool openDevice();

    /// Finds the central sync block: the first core named "*central_sync" in the layout.
    /// @return false when there is none, or none inside the mapped space.
    bool loadCoreAddresses();

    /// The registers from the word at `address` (low two bits ignored) to the end of the mapped space; empty
    /// when nothing is mapped or the address lies behind the end. A core's first 64 bytes are always safe
    /// to access when its first word is in here: cores are 64-byte aligned and memory is mapped in pages.
    std::span<volatile std::uint32_t> words(unsigned int address) const {
        return has(address) ? std::span(&word(address), wordCount_ - address / kWordSize)
                            : std::span<volatile std::uint32_t>();
    }

    /// Whether there is a word at `address` (low two bits ignored).
    bool has(unsigned int address) const { return address / kWordSize < wordCount_; }
    /// That word, which must be there.
    volatile std::uint32_t& word(unsigned int address) const { return base_[address / kWordSize]; }

    /// The registers of the central sync block; null while none is known.
    volatile std::uint32_t* centralSync() const { return centralSync_; }

private:
    static constexpr int kWholeFile = -1;
    static constexpr unsigned int kWordSize = sizeof(std::uint32_t);

    const char* deviceName_ = device;
    Descriptor node_;
    int length_ = kWholeFile;  // what is asked to be mapped, not what is: it is never anything else
    volatile std::uint32_t* base_ = nullptr;
    bool simulation_ = false;
    volatile std::uint32_t* centralSync_ = nullptr;
    std::size_t wordCount_ = 0;  // of what is mapped
};

}  // namespace Valen::HAL
