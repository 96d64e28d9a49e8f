#pragma once

#include <QString>
#include <string>
#include <vector>

namespace rfu::command {

/// "; did you mean --format?" with the known name that is nearest to a wrong one, whatever their
/// dashes and letter case; empty where none is near.
std::string didYouMean(const QString& wrong, const std::vector<std::string>& known);

}  // namespace rfu::command
