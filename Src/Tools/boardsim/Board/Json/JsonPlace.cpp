#include "Tools/boardsim/Board/Json/JsonPlace.h"

namespace boardsim {

const JsonObject& JsonPlace::object() const {
    if (const auto* const object = std::get_if<JsonObject>(&value_->value)) {
        return *object;
    }
    refuse("want an object");
}

const JsonList& JsonPlace::list() const {
    if (const auto* const list = std::get_if<JsonList>(&value_->value)) {
        return *list;
    }
    refuse("want a list");
}

JsonPlace JsonPlace::member(const std::string& name) const {
    const std::string path = path_.empty() ? name : path_ + "." + name;
    for (const auto& [known, value] : object()) {
        if (known == name) {
            return JsonPlace(value, path);
        }
    }
    return JsonPlace(*value_, path);
}

JsonPlace JsonPlace::element(std::size_t number) const {
    return JsonPlace(list().at(number), path_ + "[" + std::to_string(number) + "]");
}

void JsonPlace::refuse(const std::string& why) const {
    throw JsonError(value_->line, path_.empty() ? why : path_ + ": " + why);
}

}  // namespace boardsim
