#include "Tools/boardinfo/Board.h"

#include <utility>

#include "Vl/HAL/Board/HD24Interface.h"
#include "Vl/HAL/Board/OrcaInterface.h"

namespace boardinfo {

Board::Board(BoardKind kind) : kind_(kind) {
    if (kind == BoardKind::Hd24) {
        common_ = std::make_unique<Valen::HD24Interface>(&link_);
        return;
    }
    auto orca = std::make_unique<Valen::OrcaInterface>(&link_);
    orca_ = orca.get();
    common_ = std::move(orca);
}

Board::~Board() = default;

const char* Board::name() const {
    return kind_ == BoardKind::Hd24 ? "hd24" : "orca";
}

}  // namespace boardinfo
