#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/support/finding.h"

namespace rfu {

inline constexpr Rule kUtf16 = {"utf-16", Severity::Error,
                                "The text is UTF-16, of two bytes a letter. The library reads "
                                "bytes, and finds nothing in it: to "
                                "the loaders of maps each line ends behind its first letter.",
                                "a file that Notepad saved as \"Unicode\"",
                                "Save the file as ASCII or UTF-8."};

inline constexpr Rule kLineEnds = {"line-ends", Severity::Error,
                                   "Lines end in a carriage return alone, as old systems wrote "
                                   "them. To the library it ends no line: "
                                   "it reads the whole file as a single one.",
                                   "ncols 4\\rnrows 2\\r...",
                                   "Save the file with line ends of Unix (LF) or Windows (CR LF)."};

/// The finding about a file in UTF-16, or one whose lines end in CR alone, where it takes the place of all others.
/// @param rules with kUtf16 and kLineEnds
/// @throw InputError where the file cannot be read
std::optional<Findings> notPlainText(const QString& file, const RuleTable& rules);

/// A text of UTF-16 with a byte-order mark as UTF-8 without one, and one whose lines end in CR alone with LF in their
/// place.
/// @param ignored rules; what is about them stays
/// @return nothing for any other text, for compressed data, and for a text that is not certainly UTF-16: of an odd length,
/// with half a surrogate pair, with a NUL, or with fewer characters of ASCII than beyond it
std::optional<std::string> inPlainText(std::string_view bytes, const RuleNames& ignored = {});

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

}  // namespace rfu
