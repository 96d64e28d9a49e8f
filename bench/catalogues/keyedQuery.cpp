// Finding the code of a choice by its ids, beside two finds in bare hash maps with the same keys.
#include <rfUtils/catalogues/subItemList.h>

#include <support/catalogueText.h>
#include <support/random.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using namespace rfu::bench;

constexpr std::size_t kItems = 400;
constexpr std::size_t kChoices = 50;
constexpr std::size_t kQueries = 4096;

struct Query {
    std::string item;
    std::string choice;
    int code;
};

/// choiceName() in upper case: the key in the bare maps.
std::string choiceKey(std::size_t choice) {
    return "CHOICE" + std::to_string(choice);
}

std::vector<Query> queries(std::string (*nameOf)(std::size_t choice)) {
    Random random(5);
    std::vector<Query> result;
    for (std::size_t i = 0; i < kQueries; ++i) {
        const std::uint64_t choice = random.below(kChoices);
        result.push_back(
            {itemName(random.below(kItems)), nameOf(choice), static_cast<int>(choice)});
    }
    return result;
}

subItem record(std::size_t item, std::size_t choice) {
    return {itemName(item), choiceName(choice), "Choice", static_cast<int>(choice), 1};
}

/// Runs the queries in turn.
template <typename Code>
void measure(benchmark::State& state, const std::vector<Query>& asked, Code code) {
    for (const Query& query : asked) {
        if (code(query) != query.code) {
            state.SkipWithError("a wrong code");
            return;
        }
    }
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(code(asked[next]));
        next = (next + 1) % kQueries;
    }
}

void ours(benchmark::State& state) {
    subItemList list;
    for (std::size_t item = 0; item < kItems; ++item) {
        for (std::size_t choice = 0; choice < kChoices; ++choice) {
            list.addFromSubItem(record(item, choice));
        }
    }
    measure(state, queries(choiceName), [&](const Query& query) {
        return list.getOrderFromSubItemId(query.item, query.choice);
    });
}

void bareMaps(benchmark::State& state) {
    std::unordered_map<std::string, std::unordered_map<std::string, subItem>> items;
    for (std::size_t item = 0; item < kItems; ++item) {
        for (std::size_t choice = 0; choice < kChoices; ++choice) {
            items[itemName(item)][choiceKey(choice)] = record(item, choice);
        }
    }
    measure(state, queries(choiceKey), [&](const Query& query) {
        const auto item = items.find(query.item);
        if (item == items.end()) {
            return -999;
        }
        const auto choice = item->second.find(query.choice);
        return choice == item->second.end() ? -999 : int{choice->second.enumValue};
    });
}

}  // namespace

BENCHMARK(ours)->Name("catalogue_query/ours");
BENCHMARK(bareMaps)->Name("catalogue_query/two_finds");
