#include "Tools/overlayview/Description.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>

namespace overlayview {
namespace {

using Json = nlohmann::ordered_json;

std::string hex(std::uint32_t word) {
    std::array<char, 16> text{};
    const int length = std::snprintf(text.data(), text.size(), "%08x", word);
    return {text.data(), static_cast<std::size_t>(length)};
}

void addRuns(Json& json, const RunFacts& facts) {
    json["run words"] = facts.words;
    json["runs"] = facts.runs;
    json["longest run"] = facts.longest;
    json["covered pixels"] = facts.covered;
}

template <typename T>
void addIfKnown(Json& json, const char* name, const std::optional<T>& value) {
    if (value) {
        json[name] = *value;
    }
}

/// Both forms come from here, so that they tell the same.
Json facts(const std::string& file, const Description& description) {
    Json json;
    json["file"] = file;
    json["file bytes"] = description.fileBytes;
    if (description.header) {
        json["marker"] = hex(description.header->marker);
        json["identifier"] = description.header->identifier;
        json["body words"] = description.header->bodyWords;
    }
    json["body bytes"] = description.bodyBytes;
    json["kind"] = nameOf(description.kind);
    addIfKnown(json, "pixels", description.pixels);
    if (description.size) {
        json["width"] = description.size->width;
        json["height"] = description.size->height;
    }
    if (description.runs) {
        addRuns(json, *description.runs);
    }
    addIfKnown(json, "colours", description.colours);
    addIfKnown(json, "padding bytes", description.paddingBytes);
    return json;
}

std::string line(const std::string& name, const std::string& value) {
    constexpr std::size_t kColumn = 16;
    return name + std::string(kColumn - std::min(name.size(), kColumn - 1), ' ') + value + "\n";
}

std::string lines(const std::string& name, const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values) {
        text += line(name, value);
    }
    return text;
}

std::string plain(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

}  // namespace

std::string asText(const std::string& file, const Description& description) {
    const Json known = facts(file, description);
    std::string text;
    for (const auto& [name, value] : known.items()) {
        text += line(name, plain(value));
    }
    const Findings& findings = description.findings;
    return text + lines("damage", findings.damage) + lines("note", findings.notes) +
           lines("for a picture", findings.lacking);
}

std::string asJson(const std::string& file, const Description& description) {
    const Json known = facts(file, description);
    Json json;
    for (const auto& [name, value] : known.items()) {
        std::string key = name;
        std::replace(key.begin(), key.end(), ' ', '_');
        json[key] = value;
    }
    json["damage"] = description.findings.damage;
    json["notes"] = description.findings.notes;
    json["lacking"] = description.findings.lacking;
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace overlayview
