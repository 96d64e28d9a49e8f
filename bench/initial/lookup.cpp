// Lookups and deletions in a full table beside a plain scan of a std::vector.
#include <rfUtils/initial/itemInitial.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

using Entries = std::vector<initialValue_t>;

constexpr int kEntries = itemInitial::kCapacity;

using IdOf = std::string (*)(int);

/// Ids of equal length and with a common prefix: none differs from another at its start.
std::string idOf(int entry) {
    char id[32];
    std::snprintf(id, sizeof id, "receiver.%05d", entry);
    return id;
}

/// Ids with a common suffix.
std::string idEndingAlike(int entry) {
    char id[32];
    std::snprintf(id, sizeof id, "%05d.receiver", entry);
    return id;
}

initialValue_t entryOf(int entry, IdOf name = idOf) {
    initialValue_t value;
    value.id = name(entry);
    value.type = 3;
    value.sValue = "of parameter " + value.id;  // too long for std::string's own buffer
    return value;
}

std::unique_ptr<itemInitial> fullTable(IdOf name = idOf) {
    auto table = std::make_unique<itemInitial>();
    for (int i = 0; i < kEntries; ++i) {
        table->addInitialVal(entryOf(i, name));
    }
    return table;
}

Entries fullArray(IdOf name = idOf) {
    Entries entries;
    for (int i = 0; i < kEntries; ++i) {
        entries.push_back(entryOf(i, name));
    }
    return entries;
}

void measureLookup(benchmark::State& state, int entry, IdOf name) {
    const auto table = fullTable(name);
    const std::string id = name(entry);
    if ((table->findInitialVal(id) != nullptr) != (entry < kEntries)) {
        state.SkipWithError("wrong answer");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(table->findInitialVal(id));
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(measureLookup, last, kEntries - 1, idOf)->Name("initial_lookup_last/ours");
BENCHMARK_CAPTURE(measureLookup, absent, kEntries, idOf)->Name("initial_lookup_absent/ours");
BENCHMARK_CAPTURE(measureLookup, alike, kEntries, idEndingAlike)
    ->Name("initial_lookup_ending_alike/ours");

initialValue_t* scan(Entries& entries, const std::string& id) {
    for (initialValue_t& entry : entries) {
        if (entry.id == id) {
            return &entry;
        }
    }
    return nullptr;
}

void measureScan(benchmark::State& state, int entry, IdOf name) {
    Entries entries = fullArray(name);
    const std::string id = name(entry);
    for (auto _ : state) {
        benchmark::DoNotOptimize(scan(entries, id));
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(measureScan, last, kEntries - 1, idOf)->Name("initial_lookup_last/bare");
BENCHMARK_CAPTURE(measureScan, absent, kEntries, idOf)->Name("initial_lookup_absent/bare");
BENCHMARK_CAPTURE(measureScan, alike, kEntries, idEndingAlike)
    ->Name("initial_lookup_ending_alike/bare");

/// The entry at a place after so many entries were deleted there and appended again.
int entryAt(int place, int deletions) {
    return place + deletions % (kEntries - place);
}

/// Deletes the entry at a place and appends it again: the table stays full.
void measureDelete(benchmark::State& state, int place) {
    const auto table = fullTable();
    int deletions = 0;
    for (auto _ : state) {
        const initialValue_t entry = entryOf(entryAt(place, deletions++));
        table->delInitialVal(entry.id);
        table->setInitialVal(entry.id, entry.sValue);
        benchmark::ClobberMemory();
    }
    const initialValue_t* const entries = table->findInitialVal(idOf(0));
    for (int i = 0; i < kEntries; ++i) {
        const int entry = i < place ? i : entryAt(place, deletions + i - place);
        if (entries == nullptr || entries[i].id != idOf(entry)) {
            state.SkipWithError("wrong order of entries");
            return;
        }
    }
}
BENCHMARK_CAPTURE(measureDelete, last, kEntries - 1)->Name("initial_delete_last/ours");
BENCHMARK_CAPTURE(measureDelete, middle, kEntries / 2)->Name("initial_delete_middle/ours");
BENCHMARK_CAPTURE(measureDelete, first, 0)->Name("initial_delete_first/ours");

/// The same with std::vector: a scan and an erase.
void measureErase(benchmark::State& state, int place) {
    Entries entries = fullArray();
    int deletions = 0;
    for (auto _ : state) {
        const initialValue_t entry = entryOf(entryAt(place, deletions++));
        initialValue_t* const match = scan(entries, entry.id);
        entries.erase(entries.begin() + (match - entries.data()));
        entries.emplace_back();
        entries.back().id = entry.id;
        entries.back().type = entry.type;
        entries.back().sValue = entry.sValue;
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(measureErase, last, kEntries - 1)->Name("initial_delete_last/bare");
BENCHMARK_CAPTURE(measureErase, middle, kEntries / 2)->Name("initial_delete_middle/bare");
BENCHMARK_CAPTURE(measureErase, first, 0)->Name("initial_delete_first/bare");

}  // namespace
