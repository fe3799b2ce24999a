#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Tools/boardsim/Models/FileAnswer.h"
#include "Tools/boardsim/Models/W1Id.h"

namespace boardsim {

/// A file that the kernel's driver of a slave gives it, beside "id" and "name" that all have.
struct W1File {
    std::string name;
    std::size_t bytes = 0;  ///< its size
    std::function<FileAnswer(std::uint64_t offset, std::span<std::byte> into)> read;
    std::function<FileAnswer(std::uint64_t offset, std::span<const std::byte> bytes)> write{};  ///< may lack
};

/// What goes wrong with a slave on demand. Each number counts down as it happens; none happens at 0.
struct W1Faults {
    unsigned shortReads = 0;   ///< a read of a file gives half of what was asked for
    unsigned shortWrites = 0;  ///< a write to a file takes half of what was given
    unsigned crcErrors = 0;    ///< a bit flips on the way from the chip
    unsigned failures = 0;     ///< a read or write of a file gets no answer from the chip
    unsigned romErrors = 0;    ///< a search reads its ROM with a wrong CRC
};

/// A chip on a 1-Wire bus as the kernel's driver of its family shows it. It can be taken off the bus and put
/// back; off the bus it answers nothing. Not thread-safe.
class W1Slave {
public:
    explicit W1Slave(W1Id id) : id_(id) {}
    W1Slave(const W1Slave&) = delete;
    W1Slave& operator=(const W1Slave&) = delete;
    virtual ~W1Slave() = default;

    const W1Id& id() const { return id_; }

    bool plugged() const { return plugged_; }
    void plug() { plugged_ = true; }
    void unplug() { plugged_ = false; }

    /// The slave comes off the bus at the next access to a file after `accesses` more of them.
    void unplugAfter(unsigned accesses) { unplugAfter_ = accesses; }

    W1Faults& faults() { return faults_; }

    /// The chip's own files.
    virtual std::vector<W1File> files() = 0;

protected:
    /// To be asked before each access to a file. @return how many of `wanted` bytes to move, or the error.
    FileAnswer admit(std::size_t wanted, unsigned W1Faults::*shortTransfers);

    /// Counts a fault down. @return whether it happens now.
    bool happens(unsigned W1Faults::*fault);

private:
    W1Id id_;
    W1Faults faults_;
    std::optional<unsigned> unplugAfter_;
    bool plugged_ = true;
};

}  // namespace boardsim
