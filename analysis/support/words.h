#pragma once

#include <QStringView>
#include <string>
#include <string_view>

namespace rfu {

/// Whether two words differ at most in the case of ASCII letters.
bool isSameWord(std::string_view a, std::string_view b);

/// A text as it stands between double quotes: a backslash before each quote and backslash in it.
std::string withEscapedQuotes(std::string_view text);

/// Insertions, deletions and replacements that lead from one text to the other.
int editDistance(QStringView from, QStringView to);

}  // namespace rfu
