#include "Vl/Common/Enums/AlarmPriority.h"

#include <cstdio>

namespace Enums::AlarmPriority {

const char* GetText(AlarmPriority_T priority) {
    if (IsValidNum(priority)) {
        return TextTable<kRows>::textOf(priority);
    }
    static char unknown[sizeof "unknown (-2147483648)"];
    std::snprintf(unknown, sizeof unknown, "unknown (%d)", static_cast<int>(priority));
    return unknown;
}

}  // namespace Enums::AlarmPriority
