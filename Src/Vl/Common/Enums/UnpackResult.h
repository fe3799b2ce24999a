#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The outcome of unpacking an update package.
namespace Enums::UnpackResult {

enum Type : int {
    Ok = 0,
    FileNotFound = 1,
    WrongFormat = 2,
    ChecksumError = 3,
    VersionMismatch = 4,
    NoSpace = 5,
    WriteError = 6,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Ok, "Ok"},
    {FileNotFound, "File not found"},
    {WrongFormat, "Wrong format"},
    {ChecksumError, "Checksum error"},
    {VersionMismatch, "Version mismatch"},
    {NoSpace, "No space"},
    {WriteError, "Write error"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::UnpackResult
