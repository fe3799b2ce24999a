// A message of any pieces: formats, texts and numbers of any flags and width, put anywhere into a buffer.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "Fuzz/Require.h"
#include "Vl/Common/Log/TypedFormat.h"

namespace {

using Valen::Log::BufBase;
using Valen::Log::Number;

/// The input, taken apart from its beginning; what is missing at its end is zero.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool isEmpty() const { return size_ == 0; }

    template <typename Value>
    Value take() {
        Value value{};
        std::memcpy(&value, data_, advance(sizeof value));
        return value;
    }

    std::string takeText() {
        const std::size_t wanted = take<std::uint16_t>() % 600;
        const std::uint8_t* const text = data_;
        const std::size_t length = advance(wanted);
        return {text, text + length};
    }

private:
    std::size_t advance(std::size_t count) {
        count = std::min(count, size_);
        data_ += count;
        size_ -= count;
        return count;
    }

    const std::uint8_t* data_;
    std::size_t size_;
};

/// Puts one piece; the next byte of the input says which kind.
char* putPiece(BufBase& buffer, char* at, Input& input) {
    switch (input.take<std::uint8_t>() % 6) {
        case 0:
            return buffer.put(at, input.takeText().c_str());
        case 1:
            return buffer.putUInt64(at, input.take<std::uint64_t>(), input.take<int>());
        case 2:
            return buffer.putInt64(at, input.take<std::int64_t>(), input.take<int>());
        case 3:
            return buffer.putULong(at, input.take<std::uint32_t>(), input.take<int>());
        case 4:
            return buffer.putLong(at, input.take<std::int16_t>(), input.take<int>());
        default: {
            const std::string format = input.takeText();
            const auto [rest, end] = buffer.process(at, format.c_str());
            const char* const formatEnd = format.c_str() + format.size();
            require(rest == nullptr || (rest >= format.c_str() + 2 && rest <= formatEnd && rest[-1] == '?'));
            return end;
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    BufBase buffer;
    char* at = buffer.begin();
    while (!input.isEmpty()) {
        char* const end = putPiece(buffer, at, input);
        require(end >= at && end <= buffer.begin() + 511 && *end == '\0');
        // Now and then a position in the middle is written anew.
        at = input.take<std::uint8_t>() % 8 == 0 ? at : end;
    }
    Input again(data, size);
    const std::string text = again.takeText();
    const std::string argument = again.takeText();
    const auto value = again.take<std::int64_t>();
    const char* const end = format(buffer, text.c_str(), argument, value, Number(value, again.take<int>()));
    require(end <= buffer.begin() + 511 &&
            std::strlen(buffer.text()) == static_cast<std::size_t>(end - buffer.text()));
    return 0;
}
