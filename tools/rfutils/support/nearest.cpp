#include "support/nearest.h"

#include "analysis/support/words.h"

namespace rfu::command {

namespace {

QString withoutDashes(QString name) {
    while (name.startsWith(QLatin1Char('-'))) {
        name.remove(0, 1);
    }
    return name;
}

}  // namespace

std::string didYouMean(const QString& wrong, const std::vector<std::string>& known) {
    std::vector<QString> names;
    names.reserve(known.size());
    for (const std::string& name : known) {
        names.push_back(withoutDashes(QString::fromStdString(name)));
    }
    const int nearest = nearMiss(withoutDashes(wrong), names);
    return nearest < 0 ? std::string()
                       : "; did you mean " + known[static_cast<std::size_t>(nearest)] + "?";
}

}  // namespace rfu::command
