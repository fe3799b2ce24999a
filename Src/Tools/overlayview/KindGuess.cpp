#include "Tools/overlayview/KindGuess.h"

#include "Tools/overlayview/PictureSize.h"
#include "Tools/overlayview/RunLengths.h"

namespace overlayview {

Kind guessKind(const Container& container, const Request& request) {
    if (request.sheet) {
        return Kind::Font;
    }
    const RunLengths runs(container.body());
    if (runs.sound()) {
        return Kind::Runs;
    }
    Findings findings;
    if (sizeOfPattern(container, request, findings)) {
        return Kind::Pattern;
    }
    return runs.plausible() && runs.facts().words > 0 ? Kind::Runs : Kind::Unknown;
}

}  // namespace overlayview
