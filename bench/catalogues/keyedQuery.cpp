// The code of a choice by its ids, beside two finds in bare hash maps under the very keys.
#include <rfUtils/catalogues/subItemList.h>

#include <support/catalogueText.h>
#include <support/random.h>

#include <benchmark/benchmark.h>

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

/// @param capitals whether ids stand as the bare maps file them
std::vector<Query> queries(bool capitals) {
    Random random(5);
    std::vector<Query> result;
    for (std::size_t i = 0; i < kQueries; ++i) {
        const std::uint64_t choice = random.below(kChoices);
        const std::string name = choiceName(choice);
        result.push_back({itemName(random.below(kItems)),
                          capitals ? "CHOICE" + name.substr(6) : name, static_cast<int>(choice)});
    }
    return result;
}

subItem record(std::size_t item, std::size_t choice) {
    return {itemName(item), choiceName(choice), "Choice", static_cast<int>(choice), 1};
}

/// Asks everything in turn; `code` answers a query.
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
    measure(state, queries(false), [&](const Query& query) {
        return list.getOrderFromSubItemId(query.item, query.choice);
    });
}

void bareMaps(benchmark::State& state) {
    std::unordered_map<std::string, std::unordered_map<std::string, subItem>> items;
    for (std::size_t item = 0; item < kItems; ++item) {
        for (std::size_t choice = 0; choice < kChoices; ++choice) {
            items[itemName(item)]["CHOICE" + std::to_string(choice)] = record(item, choice);
        }
    }
    measure(state, queries(true), [&](const Query& query) {
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
