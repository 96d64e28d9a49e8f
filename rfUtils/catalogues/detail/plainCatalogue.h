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

/// Reads a catalogue straight into its choices, without a document in between: in a third of the
/// time and of the memory.
///
/// Allowed for plain files alone, of which every JSON reader makes the same: an object of arrays of
/// objects of texts and integers of at most nine digits. Texts hold UTF-8 of at most three bytes a
/// character without escapes, control characters and U+F000 to U+FFFF (byte-order marks are among
/// them); no item stands twice. People and programs write such files.
/// @return nothing for any other file, well-formed or not: that takes a real JSON reader
std::optional<PlainCatalogue> readPlainCatalogue(const QByteArray& bytes);

}  // namespace rfu::detail
