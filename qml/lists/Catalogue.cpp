#include "qml/lists/Catalogue.h"

#include <utility>

#include "qml/support/files.h"
#include "qml/support/properties.h"

namespace rfu::qml {

Catalogue::Catalogue()
    : reading_([this](std::shared_ptr<const ItemChoices> choices, const QString& error) {
          if (choices == nullptr) {
              finish(Error, error);
          } else {
              hold(std::move(choices));
              finish(Ready, {});
          }
      }) {}

void Catalogue::setSource(const QUrl& source) {
    setSources(source.isEmpty() ? QList<QUrl>() : QList<QUrl>{source});
}

void Catalogue::setSources(const QList<QUrl>& sources) {
    const QUrl before = source();
    QList<QUrl> whole;
    for (const QUrl& source : sources) {
        whole.append(inPage(*this, source));
    }
    if (!assign(sources_, whole)) {
        return;
    }
    reload();
    Q_EMIT sourcesChanged();
    if (source() != before) {
        Q_EMIT sourceChanged();
    }
}

void Catalogue::reload() {
    if (sources_.isEmpty()) {
        reading_.cancel();
        hold(std::make_shared<const ItemChoices>());
        finish(Null, {});
        return;
    }
    reading_.start([sources = sources_](const std::atomic<bool>& isCancelled) {
        ItemChoices choices;
        for (const QUrl& source : sources) {
            if (isCancelled) {
                break;
            }
            addChoices(choices, fileOf(source));
        }
        return choices;
    });
    finish(Loading, {});
}

void Catalogue::hold(std::shared_ptr<const ItemChoices> choices) {
    std::swap(held_, choices);
    Q_EMIT choicesChanged();
    if (held_->items != choices->items) {
        Q_EMIT itemsChanged();
    }
}

void Catalogue::finish(Status status, const QString& error) {
    if (assign(error_, error)) {
        Q_EMIT errorStringChanged();
    }
    if (assign(status_, status)) {
        Q_EMIT statusChanged();
    }
}

}  // namespace rfu::qml
