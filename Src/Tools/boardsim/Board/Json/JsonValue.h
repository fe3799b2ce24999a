#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace boardsim {

struct JsonValue;
using JsonList = std::vector<JsonValue>;
/// Members in their order; a name comes once.
using JsonObject = std::vector<std::pair<std::string, JsonValue>>;

/// A JSON value and the line in which its text ends, from 1; an object's or a list's, in which it begins.
/// 0 for values that come from no text.
struct JsonValue {
    std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string, JsonList, JsonObject>
        value{nullptr};
    std::size_t line = 0;
};

/// What is wrong with a text, and in which line.
class JsonError : public std::invalid_argument {
public:
    JsonError(std::size_t line, const std::string& what) : std::invalid_argument(what), line_(line) {}
    std::size_t line() const { return line_; }

private:
    std::size_t line_;
};

/// Reads a JSON text (RFC 8259). A whole number that is not negative is unsigned.
/// @throws JsonError also for a name that an object has twice, and for more than 32 levels.
JsonValue parseJson(std::string_view text);

/// The value as text: members and elements one a line, indented by two blanks; lists without lists or objects
/// in them in one line. No line end behind it.
std::string printJson(const JsonValue& value);

}  // namespace boardsim
