#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What has become of a message that was to be sent.
namespace Enums::SendInfo {

enum Type : int {
    NotSent = 0,
    Queued = 1,
    Sent = 2,
    Acknowledged = 3,
    Failed = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {NotSent, "Not sent"},
    {Queued, "Queued"},
    {Sent, "Sent"},
    {Acknowledged, "Acknowledged"},
    {Failed, "Failed"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::SendInfo
