#pragma once

#include <QString>
#include <QStringView>
#include <string>
#include <vector>

namespace rfu::command {

/// Insertions, deletions and replacements that lead from one text to the other.
int editDistance(QStringView from, QStringView to);

/// "; did you mean --format?" with the known name that is nearest to a wrong one, whatever their
/// dashes and letter case; empty where none is near.
std::string didYouMean(const QString& wrong, const std::vector<std::string>& known);

}  // namespace rfu::command
