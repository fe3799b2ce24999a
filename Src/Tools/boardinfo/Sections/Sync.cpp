#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <string>

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"
#include "Tools/boardinfo/ValueText.h"
#include "Vl/HAL/Board/HD24Interface.h"

namespace boardinfo::sections {
namespace {

using Valen::CPInterface;

constexpr const char* kSyncBlock = "*central_sync";
constexpr int kWordDigits = 8;
constexpr int kIdDigits = 14;  // 56 bits

std::string timeText(const CPInterface::Vitc& time) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%02" PRIu32 ":%02" PRIu32 ":%02" PRIu32 ":%02" PRIu32,
                  time.seconds / 3600, time.seconds / 60 % 60, time.seconds % 60, time.frames);
    return text.data();
}

std::string userBitsText(const CPInterface::Vitc& time) {
    std::array<char, 2 * sizeof time.userBits + 1> text;
    std::snprintf(text.data(), text.size(), "%02X%02X%02X%02X", time.userBits[0], time.userBits[1],
                  time.userBits[2], time.userBits[3]);
    return text.data();
}

Row timeCode(const CPInterface& cp) {
    CPInterface::Vitc time;
    if (!cp.getVitcData(time)) {
        return failed("time code");
    }
    return answered("time code", timeText(time))
        .with("milliseconds", std::int64_t{time.milliseconds})
        .with("user bits", userBitsText(time));
}

}  // namespace

Section sync(Board& board) {
    const CPInterface& cp = board.common();
    const auto [isKnown, word] = cp.getSyncWord();
    Section section{"sync"};
    if (!isKnown) {
        const State state = silence(coreState(board, kSyncBlock) != State::NotPresent);
        section.rows = {{"sync word", state},
                        {"sync ID", state},
                        {"sync master", state},
                        {"is master", state},
                        {"time code", state}};
        return section;
    }
    section.rows = {answered("sync word", hexText(word, kWordDigits)),
                    answered("sync ID", hexText(cp.getSyncID(), kIdDigits)),
                    answered("sync master", hexText(cp.getSyncMaster(), kIdDigits)),
                    answered("is master", cp.isSyncMaster()), timeCode(cp)};
    return section;
}

}  // namespace boardinfo::sections
