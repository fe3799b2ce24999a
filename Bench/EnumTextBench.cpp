// Device parameters by number and by name, as a protocol that speaks of them needs it.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Vl/Common/Enums/ParameterID.h"

namespace {

namespace ParameterID = Enums::ParameterID;

/// The numbers of all parameters in no order, so that neither the caches' neighbours nor a guess of the next
/// one help.
std::vector<int> shuffledNumbers() {
    std::vector<int> numbers;
    for (const Enums::TextRow& row : ParameterID::kRows) {
        numbers.push_back(row.value);
    }
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    return numbers;
}

/// Their names, each in memory of its own as when it came over a wire.
std::vector<std::string> shuffledNames() {
    std::vector<std::string> names;
    for (const int number : shuffledNumbers()) {
        names.emplace_back(ParameterID::GetText(static_cast<ParameterID::Type>(number)));
    }
    return names;
}

const char* rowText(int number) {
    const auto* row =
        std::find_if(ParameterID::kRows.begin(), ParameterID::kRows.end(),
                     [=](const Enums::TextRow& candidate) { return candidate.value == number; });
    return row == ParameterID::kRows.end() ? "unknown" : row->text;
}

std::unordered_map<int, const char*> textsByNumber() {
    std::unordered_map<int, const char*> texts;
    for (const Enums::TextRow& row : ParameterID::kRows) {
        texts.emplace(row.value, row.text);
    }
    return texts;
}

std::unordered_map<std::string_view, int> numbersByText() {
    std::unordered_map<std::string_view, int> numbers;
    for (const Enums::TextRow& row : ParameterID::kRows) {
        numbers.emplace(row.text, row.value);
    }
    return numbers;
}

/// Reports the time of one look-up.
void countLookUps(benchmark::State& state, std::size_t perPass) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(perPass));
}

void getTextOurs(benchmark::State& state) {
    const std::vector<int> numbers = shuffledNumbers();
    for (int number = -10; number < 17000; ++number) {
        if (std::strcmp(ParameterID::GetText(static_cast<ParameterID::Type>(number)), rowText(number)) != 0) {
            state.SkipWithError("wrong text");
            return;
        }
    }
    for (auto _ : state) {
        for (const int number : numbers) {
            benchmark::DoNotOptimize(ParameterID::GetText(static_cast<ParameterID::Type>(number)));
        }
    }
    countLookUps(state, numbers.size());
}

void getTextMap(benchmark::State& state) {
    const std::vector<int> numbers = shuffledNumbers();
    const auto texts = textsByNumber();
    for (auto _ : state) {
        for (const int number : numbers) {
            const auto found = texts.find(number);
            benchmark::DoNotOptimize(found == texts.end() ? "unknown" : found->second);
        }
    }
    countLookUps(state, numbers.size());
}

void getTypeOurs(benchmark::State& state) {
    const std::vector<std::string> names = shuffledNames();
    for (const Enums::TextRow& row : ParameterID::kRows) {
        if (ParameterID::GetType(row.text) != row.value) {
            state.SkipWithError("wrong number");
            return;
        }
    }
    for (auto _ : state) {
        for (const std::string& name : names) {
            benchmark::DoNotOptimize(ParameterID::GetType(name.c_str()));
        }
    }
    countLookUps(state, names.size());
}

/// The peer is given the same: a text whose length nobody knows.
void getTypeMap(benchmark::State& state) {
    const std::vector<std::string> names = shuffledNames();
    const auto numbers = numbersByText();
    for (auto _ : state) {
        for (const std::string& name : names) {
            const auto found = numbers.find(std::string_view(name.c_str()));
            benchmark::DoNotOptimize(found == numbers.end() ? -1 : found->second);
        }
    }
    countLookUps(state, names.size());
}

BENCHMARK(getTextOurs)->Name("get_text_parameter_id/ours");
BENCHMARK(getTextMap)->Name("get_text_parameter_id/unordered_map");
BENCHMARK(getTypeOurs)->Name("get_type_parameter_id/ours");
BENCHMARK(getTypeMap)->Name("get_type_parameter_id/unordered_map");

}  // namespace
