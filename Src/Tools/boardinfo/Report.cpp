#include "Tools/boardinfo/Report.h"

#include <algorithm>

namespace boardinfo {

bool Report::hasFailures() const {
    return std::ranges::any_of(sections, [](const Section& section) {
        return std::ranges::any_of(section.rows, [](const Row& row) { return row.state == State::Failed; });
    });
}

}  // namespace boardinfo
