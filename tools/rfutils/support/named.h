#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace rfu::command {

// Tables whose rows have a name, for options of Kind::Word.

template <typename Row, std::size_t size>
std::vector<std::string> namesOf(const Row (&table)[size]) {
    std::vector<std::string> names;
    std::transform(std::begin(table), std::end(table), std::back_inserter(names),
                   [](const Row& row) { return row.name; });
    return names;
}

/// The row of a name that the parser has accepted.
template <typename Row, std::size_t size>
const Row& named(const Row (&table)[size], std::string_view name) {
    return *std::find_if(std::begin(table), std::end(table),
                         [name](const Row& row) { return name == row.name; });
}

}  // namespace rfu::command
