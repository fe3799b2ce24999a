#include <cstdint>
#include <string>

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"
#include "Tools/boardinfo/ValueText.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Board/VersionsRecord.h"

namespace boardinfo::sections {
namespace {

constexpr const char* kEeprom = "eeprom";
constexpr int kWordDigits = 8;

}  // namespace

Section versions(Board& board) {
    const bool isThere = board.orca() != nullptr && isRegistered(kEeprom);
    const Valen::VersionsRecord record =
        isThere ? Valen::OrcaInterface::getVersions() : Valen::VersionsRecord{};
    // Fields that were not read leave these as they were, and fields that were never do.
    const bool hasDevice = !record.serialText.empty();
    const bool hasPcb = record.pcbVersion != 0;
    const auto row = [&](const char* name, bool isRead, Value value) {
        return isRead ? answered(name, std::move(value)) : Row{name, silence(isThere)};
    };
    Section section{"EEPROM"};
    section.rows = {
        row("device serial", hasDevice, std::to_string(record.serial)),
        row("device digits", hasDevice, record.serialText),
        row("device value 1", hasDevice, std::int64_t{record.deviceValue1}),
        row("device value 2", hasDevice, std::int64_t{record.deviceValue2}),
        row("PCB version", hasPcb, hexText(record.pcbVersion, kWordDigits)),
        row("PCB revision", hasPcb, hexText(record.pcbRevision, 3)),
    };
    return section;
}

}  // namespace boardinfo::sections
