#pragma once

#include <QString>
#include <QStringView>
#include <string>
#include <string_view>
#include <vector>

namespace rfu {

/// Whether two words differ at most in the case of ASCII letters.
bool isSameWord(std::string_view a, std::string_view b);

/// A text as it stands between double quotes: a backslash before each quote and backslash in it.
std::string withEscapedQuotes(std::string_view text);

/// Insertions, deletions and replacements that lead from one text to the other.
int editDistance(QStringView from, QStringView to);

/// The known word that a wrong one is probably meant to be, whatever the case of letters: one letter in three
/// may be wrong, or letters at the end may be missing or extra.
/// @return its index, that of the first one of several equally near; -1 where none is near
int nearMiss(const QString& wrong, const std::vector<QString>& known);

}  // namespace rfu
