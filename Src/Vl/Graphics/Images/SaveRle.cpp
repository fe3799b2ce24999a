#include "Vl/Graphics/Images/BigEndian.h"
#include "Vl/Graphics/Images/OverlayContainer.h"
#include "Vl/Graphics/Images/RowOrder.h"
#include "Vl/Graphics/Images/RunLengths.h"
#include "Vl/Graphics/Pixels/YUVBitmap.h"

int YUVBitmap::SaveRLE(FILE* file, unsigned long id, bool interlaced) const {
    if (const auto begun = Overlay::beginBody(file); begun != Overlay::Ok) {
        return begun;
    }
    int64_t bodyBytes = 0;
    RunLengths runs([&](std::span<const uint32_t> words) {
        bodyBytes += static_cast<int64_t>(words.size_bytes());
        return Overlay::write(file, bytesOf(words)) == Overlay::Ok;
    });
    const uint32_t* pixels = getBuffer().pixels();
    const auto width = static_cast<size_t>(getWidth());
    const int result = visitRows(getHeight(), interlaced, [&](int64_t row) {
        return runs.add({pixels + row * getWidth(), width}) ? Overlay::Ok : Overlay::WriteFailed;
    });
    if (result != Overlay::Ok || !runs.finish()) {
        return Overlay::WriteFailed;
    }
    return Overlay::finish(file, id, bodyBytes);
}
