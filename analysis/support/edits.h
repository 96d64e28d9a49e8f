#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/support/finding.h"

namespace rfu {

/// What has more than one mend.
struct Doubt {
    long long line;  // counted from 1
    std::string text;
};

/// What is to be done about a broken file.
struct Mend {
    std::vector<Edit> edits;    // each the one right mend of something
    std::vector<Doubt> doubts;  // where there are any, the file should stay as it is
};

/// A text in which edits are made.
/// @param edits within the text, in any order; they may touch but not overlap. Of several insertions at one place
/// the first comes first.
/// @throw std::logic_error for edits that overlap or lie outside of the text
std::string withEdits(std::string_view text, std::vector<Edit> edits);

/// What edits change in a file, as `diff -u` writes it and `patch` reads it: whole lines, with three lines around them.
/// Empty where they change nothing.
/// @param name of the file, in both of the heading's lines
/// @throw std::logic_error as withEdits() does
std::string unifiedDiff(std::string_view name, std::string_view text, std::vector<Edit> edits);

}  // namespace rfu
