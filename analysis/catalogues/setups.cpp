#include "analysis/catalogues/setups.h"

#include <QJsonArray>
#include <QJsonValue>

#include "analysis/catalogues/jsonFile.h"

namespace rfu {

std::vector<SetupEntry> setupsOf(const QJsonObject& groups, const QString& file,
                                 const SkippedSetup& skipped) {
    std::vector<SetupEntry> setups;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        QString last = group.key();
        for (const QJsonValue entry : group.value().toArray()) {
            const QJsonObject setup = entry.toObject();
            const char* const missing = !setup.contains(QLatin1String("label")) ? "label"
                                        : !setup.contains(QLatin1String("id"))  ? "id"
                                                                                : nullptr;
            if (missing == nullptr) {
                last = setup[QLatin1String("id")].toString();
                setups.push_back({group.key(), last, setup[QLatin1String("label")].toString()});
            } else if (skipped) {
                skipped(missing, last);
            }
        }
    }
    if (setups.empty()) {
        requireNothing(groups, file,
                       "holds no result setup: an object with id and label in the list of a group");
    }
    return setups;
}

}  // namespace rfu
