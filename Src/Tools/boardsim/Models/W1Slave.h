#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Tools/boardsim/Models/FaultSchedule.h"
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

/// What goes wrong with a slave on demand.
struct W1Faults {
    std::optional<FaultSchedule> unplugged{};    ///< it is off the bus when somebody wants something of it
    std::optional<FaultSchedule> shortReads{};   ///< a read of several bytes gives half of them
    std::optional<FaultSchedule> shortWrites{};  ///< a write of several bytes takes half of them
    std::optional<FaultSchedule> crcErrors{};    ///< a bit flips on the way from the chip
    std::optional<FaultSchedule> romErrors{};    ///< a search reads its ROM with a wrong CRC
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

    void plug() { plugged_ = true; }
    void unplug() { plugged_ = false; }

    /// Takes part in a search. @return whether it is found.
    bool answersSearch();

    W1Faults& faults() { return faults_; }

    /// The chip's own files.
    virtual std::vector<W1File> files() = 0;

protected:
    using Kind = std::optional<FaultSchedule> W1Faults::*;

    /// To be asked before each access to a file. @return how many of `wanted` bytes to move, or the error.
    FileAnswer admit(std::size_t wanted, Kind shortTransfers);

    /// To be asked for each access that the fault could hit. @return whether it does.
    bool happens(Kind fault);

private:
    bool isThere() { return plugged_ && !happens(&W1Faults::unplugged); }

    W1Id id_;
    W1Faults faults_;
    bool plugged_ = true;
};

}  // namespace boardsim
