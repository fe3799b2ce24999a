#include "Tools/boardinfo/Collect.h"

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Sections/Sections.h"

namespace boardinfo {
namespace {

constexpr Section (*kCollectors[])(Board&) = {
    sections::identity,  sections::versions, sections::fpgaCores,    sections::cpldCores,
    sections::oneWire,   sections::i2cNames, sections::temperatures, sections::cardSensors,
    sections::expanders, sections::mdioPhys, sections::configPhys,   sections::sync,
    sections::links,
};

}  // namespace

Report collect(Board& board) {
    Report report{board.name()};
    for (const auto collector : kCollectors) {
        report.sections.push_back(collector(board));
    }
    return report;
}

}  // namespace boardinfo
