#include "support/nearest.h"

#include <algorithm>

#include "analysis/support/words.h"

namespace rfu::command {

namespace {

constexpr int kMaxLength = 30;  // beyond it nothing is near any name

/// In lower case and without dashes in front.
QString bareName(QString name) {
    while (name.startsWith(QLatin1Char('-'))) {
        name.remove(0, 1);
    }
    return name.left(kMaxLength).toLower();
}

/// One letter in three may be wrong, or letters at the end may be missing or extra.
bool isNear(const QString& wrong, const QString& known, int distance) {
    const bool goesOn = std::min(wrong.size(), known.size()) >= 2 &&
                        (known.startsWith(wrong) || wrong.startsWith(known));
    return goesOn || distance <= (wrong.size() + 2) / 3;
}

}  // namespace

std::string didYouMean(const QString& wrong, const std::vector<std::string>& known) {
    const QString typed = bareName(wrong);
    std::string nearest;
    int smallest = kMaxLength;
    for (const std::string& name : known) {
        const QString other = bareName(QString::fromStdString(name));
        const int distance = editDistance(typed, other);
        if (distance < smallest && isNear(typed, other, distance)) {
            smallest = distance;
            nearest = "; did you mean " + name + "?";
        }
    }
    return nearest;
}

}  // namespace rfu::command
