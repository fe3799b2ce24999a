// Any overlay file looked at in any way: the first eight bytes say how, the rest is the file.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "Tools/overlayview/View.h"

namespace {

using namespace overlayview;

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

std::uint32_t numberFrom(std::uint8_t low, std::uint8_t high) {
    return 1U + low + 256U * (high >> 6);
}

Request requestFrom(std::span<const std::uint8_t, 8> choice) {
    Request request;
    request.kind = static_cast<Kind>(choice[0] % kKindNames.size());
    request.wantsPicture = true;
    if (choice[1] % 2 != 0) {
        request.rawOffset = choice[2];
    }
    if (choice[1] & 2) {
        request.width = numberFrom(choice[3], choice[4]);
    }
    if (choice[1] & 4) {
        request.height = numberFrom(choice[5], 0);
    }
    request.order = choice[1] & 8 ? RowOrder::Interlaced : RowOrder::Progressive;
    if (choice[1] & 16) {
        request.sheet = SheetLayout{{8U + choice[6], 1U + choice[7] % 64U}, 1U + choice[3] % 16U};
    }
    return request;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 8) {
        return 0;
    }
    const std::span input(data, size);
    const Request request = requestFrom(input.first<8>());
    const View view = look(std::as_bytes(input.subspan(8)), request);
    check(view.picture.has_value() == view.description.findings.lacking.empty());
    check(!view.picture || view.picture->pixels.size() == view.picture->size.pixels());
    check(!view.picture || (!view.picture->pixels.empty() && isDrawable(view.picture->size)));
    check(asText("f", view.description).back() == '\n');
    check(asJson("f", view.description).back() == '\n');
    return 0;
}
