#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/Json/Codec.h"

namespace boardsim {

/// A member of a part of the board and its name in a description.
template <typename Part>
struct Field {
    std::string name;
    bool isRequired;
    std::function<void(const JsonPlace&, Part&)> read;
    std::function<std::optional<JsonValue>(const Part&)> write;  ///< nothing: it is left out
};

/// All members of a part in the order in which they are written. Each part has its own, in one place for
/// reading and writing.
template <typename Part>
const std::vector<Field<Part>>& fieldsOf();

/// A member that is always there.
template <typename Part, typename T>
Field<Part> required(std::string name, T Part::*member, Codec<T> codec) {
    return {std::move(name), true,
            [=](const JsonPlace& place, Part& part) { part.*member = codec.read(place); },
            [=](const Part& part) { return std::optional(codec.write(part.*member)); }};
}

/// A member that is left out when it is what it is in a new part.
template <typename Part, typename T>
Field<Part> omittable(std::string name, T Part::*member, Codec<T> codec) {
    return {
        std::move(name), false, [=](const JsonPlace& place, Part& part) { part.*member = codec.read(place); },
        [=](const Part& part) {
            return part.*member == Part{}.*member ? std::nullopt : std::optional(codec.write(part.*member));
        }};
}

/// A member that may be absent.
template <typename Part, typename T>
Field<Part> optional(std::string name, std::optional<T> Part::*member, Codec<T> codec) {
    return {std::move(name), false,
            [=](const JsonPlace& place, Part& part) { part.*member = codec.read(place); },
            [=](const Part& part) {
                return part.*member ? std::optional(codec.write(*(part.*member))) : std::nullopt;
            }};
}

template <typename Part>
Part readFields(const JsonPlace& place) {
    const std::vector<Field<Part>>& fields = fieldsOf<Part>();
    for (const auto& [name, value] : place.object()) {
        const auto isIt = [&known = name](const Field<Part>& field) { return field.name == known; };
        if (std::none_of(fields.begin(), fields.end(), isIt)) {
            place.member(name).refuse("there is no such field");
        }
    }
    Part part{};
    for (const Field<Part>& field : fields) {
        const JsonPlace member = place.member(field.name);
        if (&member.value() != &place.value()) {
            field.read(member, part);
        } else if (field.isRequired) {
            member.refuse("is missing");
        }
    }
    return part;
}

template <typename Part>
JsonValue writeFields(const Part& part) {
    JsonObject object;
    for (const Field<Part>& field : fieldsOf<Part>()) {
        if (std::optional<JsonValue> value = field.write(part)) {
            object.emplace_back(field.name, std::move(*value));
        }
    }
    return {std::move(object)};
}

/// A part as an object with its fields. `check` looks at what no single field can tell, and refuses at the
/// place of the part or of its members.
template <typename Part>
Codec<Part> record(std::function<void(const JsonPlace&, const Part&)> check = {}) {
    return {[check](const JsonPlace& place) {
                Part part = readFields<Part>(place);
                if (check) {
                    check(place, part);
                }
                return part;
            },
            [](const Part& part) { return writeFields(part); }};
}

}  // namespace boardsim
