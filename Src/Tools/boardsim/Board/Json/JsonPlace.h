#pragma once

#include <string>

#include "Tools/boardsim/Board/Json/JsonValue.h"

namespace boardsim {

/// A value in a text and the way to it: "i2c.devices[3].address". Refers to the value.
class JsonPlace {
public:
    explicit JsonPlace(const JsonValue& value, std::string path = {})
        : value_(&value), path_(std::move(path)) {}

    const JsonValue& value() const { return *value_; }
    const std::string& path() const { return path_; }

    /// @throws JsonError when it is no object, or no list.
    const JsonObject& object() const;
    const JsonList& list() const;

    /// The member, or where it would be: then its value is the object.
    JsonPlace member(const std::string& name) const;
    JsonPlace element(std::size_t number) const;

    /// @throws JsonError that names line and path.
    [[noreturn]] void refuse(const std::string& why) const;

private:
    const JsonValue* value_;
    std::string path_;
};

}  // namespace boardsim
