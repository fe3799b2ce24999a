#include "Tools/boardinfo/JsonPrinter.h"

#include <nlohmann/json.hpp>

#include <cctype>
#include <utility>

namespace boardinfo {
namespace {

using Json = nlohmann::ordered_json;

const char* stateText(State state) {
    switch (state) {
        case State::Ok:
            return "ok";
        case State::Failed:
            return "failed";
        case State::NotPresent:
            break;
    }
    return "not present";
}

std::string memberName(std::string name) {
    for (char& c : name) {
        const auto byte = static_cast<unsigned char>(c);
        c = byte < 0x80 && std::isalnum(byte) != 0 ? static_cast<char>(std::tolower(byte)) : '_';
    }
    return name;
}

Json jsonOf(const Value& value) {
    return std::visit([](const auto& plain) { return Json(plain); }, value);
}

void describe(Json& object, const Row& row) {
    object["state"] = stateText(row.state);
    if (row.value) {
        object["value"] = jsonOf(*row.value);
    }
    if (row.value && !row.unit.empty()) {
        object["unit"] = row.unit;
    }
    for (const Detail& detail : row.details) {
        object[memberName(detail.name)] = jsonOf(detail.value);
    }
}

Json jsonOf(const Section& section) {
    Json rows = section.form == Form::Fixed ? Json::object() : Json::array();
    for (const Row& row : section.rows) {
        if (section.form == Form::Fixed) {
            describe(rows[memberName(row.name)], row);
        } else {
            Json found{{"name", row.name}};
            describe(found, row);
            rows.push_back(std::move(found));
        }
    }
    return rows;
}

}  // namespace

std::string asJson(const Report& report, JsonLayout layout) {
    Json json{{"schema", kJsonSchema}, {"board", report.board}, {"ok", !report.hasFailures()}};
    for (const Section& section : report.sections) {
        json[memberName(section.name)] = jsonOf(section);
    }
    return json.dump(layout == JsonLayout::Indented ? 2 : -1, ' ', false, Json::error_handler_t::replace) +
           "\n";
}

}  // namespace boardinfo
