#include <nlohmann/json.hpp>

#include "Tools/boardsim/Board/Json/JsonValue.h"

namespace boardsim {
namespace {

constexpr std::size_t kMostLevels = 32;

/// Walks over the text and counts its lines. The parser may be one character ahead of what it reports.
class CountingIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(const char* at, std::size_t* line) : at_(at), line_(line) {}

    reference operator*() const { return *at_; }
    CountingIterator& operator++() {
        // Counted when the character behind the line end is reached.
        *line_ += pending_ ? 1U : 0U;
        pending_ = *at_ == '\n';
        ++at_;
        return *this;
    }
    CountingIterator operator++(int) {
        const CountingIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const CountingIterator& other) const { return at_ == other.at_; }
    bool operator!=(const CountingIterator& other) const { return at_ != other.at_; }

private:
    const char* at_;
    std::size_t* line_;
    bool pending_ = false;
};

/// Builds the value from the parser's reports.
class Builder : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit Builder(const std::size_t& line) : line_(line) {}

    JsonValue take() { return std::move(root_); }

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(std::int64_t value) override { return add(value); }
    bool number_unsigned(std::uint64_t value) override { return add(value); }
    bool number_float(double value, const std::string&) override { return add(value); }
    bool string(std::string& value) override { return add(std::move(value)); }
    bool binary(nlohmann::json::binary_t&) override { return false; }  // JSON texts have none
    bool start_object(std::size_t) override { return open(JsonObject{}); }
    bool start_array(std::size_t) override { return open(JsonList{}); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(std::string& name) override {
        auto& object = std::get<JsonObject>(open_.back()->value);
        for (const auto& [known, value] : object) {
            if (known == name) {
                throw JsonError(line_, "'" + name + "' comes twice");
            }
        }
        object.emplace_back(std::move(name), JsonValue{});
        return true;
    }

    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception& error) override {
        // "[json.exception.parse_error.101] parse error at line 1, column 2: what is wrong"
        const std::string_view text = error.what();
        const std::size_t colon = text.find(": ");
        throw JsonError(line_, std::string(colon == std::string_view::npos ? text : text.substr(colon + 2)));
    }

private:
    template <typename T>
    bool add(T value) {
        place() = JsonValue{std::move(value), line_};
        return true;
    }

    template <typename T>
    bool open(T empty) {
        if (open_.size() == kMostLevels) {
            throw JsonError(line_, "too many levels");
        }
        JsonValue& value = place();
        value = JsonValue{std::move(empty), line_};
        open_.push_back(&value);
        return true;
    }

    bool close() {
        open_.pop_back();
        return true;
    }

    /// Where the next value goes. What is open does not move: only the innermost of it grows.
    JsonValue& place() {
        if (open_.empty()) {
            return root_;
        }
        if (auto* const list = std::get_if<JsonList>(&open_.back()->value)) {
            return list->emplace_back();
        }
        return std::get<JsonObject>(open_.back()->value).back().second;
    }

    const std::size_t& line_;
    JsonValue root_;
    std::vector<JsonValue*> open_;
};

}  // namespace

JsonValue parseJson(std::string_view text) {
    std::size_t line = 1;
    Builder builder(line);
    nlohmann::json::sax_parse(CountingIterator(text.data(), &line),
                              CountingIterator(text.data() + text.size(), &line), &builder);
    return builder.take();
}

}  // namespace boardsim
