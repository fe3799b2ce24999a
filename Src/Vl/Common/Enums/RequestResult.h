#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The answer to a request.
namespace Enums::RequestResult {

enum Type : int {
    Ok = 0,
    Failed = 1,
    Denied = 2,
    Busy = 3,
    Timeout = 4,
    NotFound = 5,
    InvalidArgument = 6,
    NotSupported = 7,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Ok, "Ok"},
    {Failed, "Failed"},
    {Denied, "Denied"},
    {Busy, "Busy"},
    {Timeout, "Timeout"},
    {NotFound, "Not found"},
    {InvalidArgument, "Invalid argument"},
    {NotSupported, "Not supported"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::RequestResult
