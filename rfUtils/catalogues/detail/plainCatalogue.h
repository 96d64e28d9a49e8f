// Private to the catalogues: not installed, may change in any release.
#pragma once

#include <rfUtils/catalogues/subItemList.h>

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

class QByteArray;

namespace rfu::detail {

/// What a catalogue file holds.
struct PlainCatalogue {
    using Choices = std::unordered_map<std::string, subItem>;  // by upper-cased sub-item id

    std::unordered_map<std::string, Choices> items;  // those with a choice, by item id
    std::int64_t arrays = 0;                         // items, with a choice or not
};

/// Reads a catalogue straight into its choices, where it is plain JSON (see PlainJson): an object
/// of arrays of objects of scalars, in which no item stands twice, and where a choice has a label,
/// an id, an enum or a dispSeq they are texts and integers.
/// @return nothing for any other file, well-formed or not
std::optional<PlainCatalogue> readPlainCatalogue(const QByteArray& bytes);

}  // namespace rfu::detail
