#pragma once

#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "support/subcommand.h"

namespace rfu::command {

/// A kind of value that names a file.
struct FileValue {
    Kind kind;
    bool isRead;  ///< else written
    /// Completions offer files of these names, and all others where there are none.
    std::initializer_list<const char*> endings;
};

// clang-format off
inline constexpr FileValue kFileValues[] = {
    {Kind::File,       true,  {}},
    {Kind::JsonFile,   true,  {"json"}},
    {Kind::CsvFile,    true,  {"csv"}},
    {Kind::SweepFile,  true,  {"csv", "csv.gz", "csv.xz", "csv.zst"}},
    {Kind::RasterFile, true,  {"asc", "bil", "hdr"}},
    {Kind::TabFile,    true,  {"tab"}},
    {Kind::StateFile,  true,  {"state"}},
    {Kind::Recording,  false, {"csv"}},
    {Kind::State,      false, {"state"}},
    {Kind::Picture,    false, {"png"}},
    {Kind::Plot,       false, {"png", "svg"}}};
// clang-format on

/// Null for the kinds of other values.
inline const FileValue* fileValueOf(Kind kind) {
    const auto* const found =
        std::find_if(std::begin(kFileValues), std::end(kFileValues),
                     [kind](const FileValue& fileValue) { return fileValue.kind == kind; });
    return found == std::end(kFileValues) ? nullptr : found;
}

}  // namespace rfu::command
