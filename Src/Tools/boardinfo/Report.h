#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace boardinfo {

/// What became of the question that a row answers.
enum class State : std::uint8_t {
    Ok,          ///< answered
    Failed,      ///< what is asked is there, but does not answer, or not sensibly
    NotPresent,  ///< this board has no such thing
};

using Value = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;

/// Something more about a row.
struct Detail {
    std::string name;
    Value value;
    std::string unit{};
};

/// One thing of the board. Names are lower-case words as people read them, or a name that the board gives.
struct Row {
    std::string name;
    State state = State::NotPresent;
    std::optional<Value> value{};  ///< none unless the state is Ok
    std::string unit{};            ///< of the value, empty where it has none
    std::vector<Detail> details{};

    Row& with(std::string detail, Value detailValue, std::string detailUnit = "") & {
        details.push_back({std::move(detail), std::move(detailValue), std::move(detailUnit)});
        return *this;
    }
    Row&& with(std::string detail, Value detailValue, std::string detailUnit = "") && {
        return std::move(with(std::move(detail), std::move(detailValue), std::move(detailUnit)));
    }
};

inline Row answered(std::string name, Value value, std::string unit = "") {
    return {std::move(name), State::Ok, std::move(value), std::move(unit)};
}
inline Row failed(std::string name) {
    return {std::move(name), State::Failed};
}
inline Row notPresent(std::string name) {
    return {std::move(name), State::NotPresent};
}

/// What a section's rows are.
enum class Form : std::uint8_t {
    Fixed,  ///< the same on every board, whether present or not
    Found,  ///< what was found, by names of the board's own; none at all is the section's "not present"
};

struct Section {
    std::string name;
    Form form = Form::Fixed;
    std::vector<Row> rows{};
};

/// Everything that is told about a board, in the order in which it is told. Knows no bus and no printer.
struct Report {
    std::string board;
    std::vector<Section> sections{};

    bool hasFailures() const;
};

}  // namespace boardinfo
