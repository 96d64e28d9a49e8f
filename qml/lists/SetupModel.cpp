#include "qml/lists/SetupModel.h"

#include "analysis/catalogues/jsonFile.h"
#include "qml/support/files.h"
#include "qml/support/properties.h"

namespace rfu::qml {

SetupModel::SetupModel()
    : ListModel({{"setupId", [](const SetupEntry& row) { return QVariant(row.id); }},
                 {"label", [](const SetupEntry& row) { return QVariant(row.label); }},
                 {"group", [](const SetupEntry& row) { return QVariant(row.group); }}},
                [](const SetupEntry& a, const SetupEntry& b) {
                    return a.group == b.group && a.id == b.id;
                }),
      reading_([this](std::shared_ptr<const std::vector<SetupEntry>> setups, const QString& error) {
          if (setups == nullptr) {
              finish(Error, error);
          } else {
              hold(*setups);
              finish(Ready, {});
          }
      }) {}

void SetupModel::setSource(const QUrl& source) {
    if (assign(source_, inPage(*this, source))) {
        reload();
        Q_EMIT sourceChanged();
    }
}

void SetupModel::reload() {
    if (source_.isEmpty()) {
        reading_.cancel();
        hold({});
        finish(Null, {});
        return;
    }
    reading_.start([source = source_](const std::atomic<bool>&) {
        const QString file = fileOf(source);
        return setupsOf(readJsonObject(file), file);
    });
    finish(Loading, {});
}

void SetupModel::hold(const std::vector<SetupEntry>& setups) {
    const int before = count();
    show(setups);
    if (count() != before) {
        Q_EMIT countChanged();
    }
}

void SetupModel::finish(Status status, const QString& error) {
    if (assign(error_, error)) {
        Q_EMIT errorStringChanged();
    }
    if (assign(status_, status)) {
        Q_EMIT statusChanged();
    }
}

}  // namespace rfu::qml
