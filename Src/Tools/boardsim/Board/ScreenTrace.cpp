#include "Tools/boardsim/Board/ScreenTrace.h"

#include "Tools/boardsim/Board/HexText.h"

namespace boardsim {
namespace {

std::string sizeOf(std::span<const std::byte> bytes) {
    return " " + std::to_string(bytes.size()) + (bytes.size() == 1 ? " byte" : " bytes");
}

std::string describeRefusal(const ScreenEvent& event) {
    const std::string what = event.bytes.empty() ? " a read" : sizeOf(event.bytes);
    return "screen refused" + what + " at " + std::to_string(event.offset) + ": " +
           std::make_error_code(event.error).message();
}

}  // namespace

std::string describe(const ScreenEvent& event) {
    const std::string place = " at " + std::to_string(event.offset);
    switch (event.kind) {
        case ScreenEvent::Kind::Frame:
            return "screen frame" + sizeOf(event.bytes) + place;
        case ScreenEvent::Kind::Piece:
            return "screen piece" + sizeOf(event.bytes) + place;
        case ScreenEvent::Kind::State:
            return "screen state" + hexBytes(event.bytes) + place;
        case ScreenEvent::Kind::Read:
            return "screen read" + hexBytes(event.bytes) + place;
        case ScreenEvent::Kind::Refused:
            return describeRefusal(event);
    }
    return {};
}

}  // namespace boardsim
