#include "Vl/Common/Log/SeverityLevel.h"

#include <array>
#include <cstddef>

namespace Valen::Log::SeverityLevel {
namespace {

using Enums::Loglevel::LoglevelType;
namespace Loglevel = Enums::Loglevel;

struct Row {
    const char* text;
    LoglevelType loglevel;
};

constexpr auto kRows = std::to_array<Row>({
    {"EMERGENCY", Loglevel::Error},
    {"ALERT", Loglevel::Error},
    {"CRITICAL", Loglevel::Error},
    {"ERROR", Loglevel::Error},
    {"WARNING", Loglevel::Warning},
    {"NOTICE", Loglevel::Warning},
    {"INFO", Loglevel::Info},
    {"SERVICE", Loglevel::Info},
    {"DEBUG", Loglevel::Info},
    {"DETAILED", Loglevel::Info},
    {"CONSOLEMIN", Loglevel::Info},
    {"CONSOLENORMAL", Loglevel::Info},
    {"CONSOLEDETAILED", Loglevel::Info},
    {"CONSOLEMAX", Loglevel::Info},
    {"RAMFILE", Loglevel::Info},
});
static_assert(kRows.size() == RAMFILE + 1);

const Row* rowOf(SeverityLevel_T level) {
    const auto index = static_cast<std::size_t>(level);
    return index < kRows.size() ? &kRows[index] : nullptr;
}

}  // namespace

const char* GetText(SeverityLevel_T level) {
    const Row* row = rowOf(level);
    return row != nullptr ? row->text : "invalid";
}

LoglevelType SeverityToLoglevel(SeverityLevel_T level) {
    const Row* row = rowOf(level);
    return row != nullptr ? row->loglevel : Loglevel::Info;
}

}  // namespace Valen::Log::SeverityLevel
