#include "Vl/Common/Enums/EventDefs.h"

#include <cstdio>

namespace Enums::EventDefs {

const char* GetText(EventDef_T event) {
    if (IsValidNum(event)) {
        return TextTable<kRows>::textOf(event);
    }
    static char decimal[30];
    std::snprintf(decimal, sizeof decimal, "%d", static_cast<int>(event));
    return decimal;
}

}  // namespace Enums::EventDefs
