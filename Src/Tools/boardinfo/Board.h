#pragma once

#include <memory>

#include "Tools/boardinfo/BoardKind.h"
#include "Vl/HAL/Board/CPLinkInterface.h"

namespace Valen {
class HD24Interface;
class OrcaInterface;
}  // namespace Valen

namespace boardinfo {

/// The board that is asked: one of the variants and its link, both owned. Building it is what building the
/// variant is: expanders are configured, what is missing is logged.
class Board {
public:
    explicit Board(BoardKind kind);
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;
    ~Board();

    BoardKind kind() const { return kind_; }
    const char* name() const;

    /// What all variants have.
    Valen::HD24Interface& common() const { return *common_; }
    /// The newer variant; null on others.
    Valen::OrcaInterface* orca() const { return orca_; }
    Valen::CPLinkInterface& link() { return link_; }

private:
    BoardKind kind_;
    Valen::CPLinkInterface link_;
    std::unique_ptr<Valen::HD24Interface> common_;
    Valen::OrcaInterface* orca_ = nullptr;
};

}  // namespace boardinfo
