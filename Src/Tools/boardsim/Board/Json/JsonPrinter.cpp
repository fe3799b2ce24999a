#include <nlohmann/json.hpp>

#include <algorithm>

#include "Tools/boardsim/Board/Json/JsonValue.h"

namespace boardsim {
namespace {

bool isPlain(const JsonValue& value) {
    return !std::holds_alternative<JsonList>(value.value) && !std::holds_alternative<JsonObject>(value.value);
}

std::string quoted(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/// Writes values one below the other.
class Printer {
public:
    std::string take() { return std::move(text_); }

    void print(const JsonValue& value) {
        std::visit([this](const auto& each) { put(each); }, value.value);
    }

private:
    void put(const JsonObject& object) {
        putBlock('{', '}', object, [this](const auto& member) {
            text_ += quoted(member.first) + ": ";
            print(member.second);
        });
    }

    void put(const JsonList& list) {
        if (!std::all_of(list.begin(), list.end(), isPlain)) {
            return putBlock('[', ']', list, [this](const JsonValue& value) { print(value); });
        }
        text_ += '[';
        for (std::size_t i = 0; i < list.size(); ++i) {
            text_ += i == 0 ? "" : ", ";
            print(list[i]);
        }
        text_ += ']';
    }

    void put(const std::string& text) { text_ += quoted(text); }

    template <typename T>
    void put(const T& plain) {
        text_ += nlohmann::json(plain).dump();
    }

    template <typename Values, typename Put>
    void putBlock(char open, char close, const Values& values, const Put& putOne) {
        text_ += open;
        indent_ += 2;
        for (std::size_t i = 0; i < values.size(); ++i) {
            text_ += (i == 0 ? "\n" : ",\n") + std::string(indent_, ' ');
            putOne(values[i]);
        }
        indent_ -= 2;
        if (!values.empty()) {
            text_ += "\n" + std::string(indent_, ' ');
        }
        text_ += close;
    }

    std::string text_;
    std::size_t indent_ = 0;
};

}  // namespace

std::string printJson(const JsonValue& value) {
    Printer printer;
    printer.print(value);
    return printer.take();
}

}  // namespace boardsim
