#include "Tools/boardsim/Board/FileTrace.h"

#include "Tools/boardsim/Board/HexText.h"

namespace boardsim {
namespace {

constexpr std::size_t kShown = 8;

std::string sizeOf(std::size_t bytes) {
    return " " + std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
}

std::string ending(std::uint64_t offset, std::errc error) {
    const std::string place = " at " + std::to_string(offset);
    return error == std::errc{} ? place : place + ": " + std::make_error_code(error).message();
}

std::string verb(const char* what, std::errc error) {
    return (error == std::errc{} ? " " : " refused ") + std::string(what);
}

}  // namespace

FileCalls traced(const std::string& name, FileCalls calls, const Tell& tell) {
    if (calls.read) {
        calls.read = [=, read = std::move(calls.read)](std::uint64_t offset, std::span<std::byte> into) {
            const Transfer done = read(offset, into);
            const std::string size = done.error == std::errc{} ? sizeOf(done.count) : "";
            tell(name + verb("read", done.error) + size + ending(offset, done.error));
            return done;
        };
    }
    if (calls.write) {
        calls.write = [=, write = std::move(calls.write)](std::uint64_t offset,
                                                          std::span<const std::byte> bytes) {
            const Transfer done = write(offset, bytes);
            const auto moved = done.error == std::errc{} ? bytes.first(done.count) : bytes;
            tell(name + verb("write", done.error) +
                 (moved.size() <= kShown ? hexBytes(moved) : sizeOf(moved.size())) +
                 ending(offset, done.error));
            return done;
        };
    }
    return calls;
}

}  // namespace boardsim
