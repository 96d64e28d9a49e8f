#include "qml/lists/ChoiceModel.h"

#include <algorithm>
#include <vector>

#include "analysis/catalogues/choices.h"
#include "analysis/support/words.h"
#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

bool isOffered(const subItem& choice) {
    return choice.dispSeq != 0;
}

}  // namespace

ChoiceModel::ChoiceModel()
    : ListModel({{"choiceId",
                  [](const subItem& row) { return QVariant(QString::fromStdString(row.id)); }},
                 {"label",
                  [](const subItem& row) { return QVariant(QString::fromStdString(row.label)); }},
                 {"code", [](const subItem& row) { return QVariant(row.enumValue); }},
                 {"sequence", [](const subItem& row) { return QVariant(row.dispSeq); }},
                 {"enabled", [](const subItem& row) { return QVariant(isOffered(row)); }}},
                [](const subItem& a, const subItem& b) {
                    return a.itemId == b.itemId && isSameWord(a.id, b.id);
                }) {}

void ChoiceModel::setCatalogue(Catalogue* catalogue) {
    if (catalogue_ == catalogue) {
        return;
    }
    if (catalogue_ != nullptr) {
        catalogue_->disconnect(this);
    }
    catalogue_ = catalogue;
    if (catalogue != nullptr) {
        connect(catalogue, &Catalogue::choicesChanged, this, &ChoiceModel::refresh);
        connect(catalogue, &QObject::destroyed, this, [this] {
            refresh();
            Q_EMIT catalogueChanged();
        });
    }
    refresh();
    Q_EMIT catalogueChanged();
}

void ChoiceModel::setItem(const QString& item) {
    if (assign(item_, item)) {
        refresh();
        Q_EMIT itemChanged();
    }
}

void ChoiceModel::setShowHidden(bool showsHidden) {
    if (assign(showsHidden_, showsHidden)) {
        refresh();
        Q_EMIT showHiddenChanged();
    }
}

void ChoiceModel::refresh() {
    std::vector<subItem> choices;
    if (catalogue_ != nullptr) {
        choices = sortedChoices(catalogue_->choices(), {item_});
    }
    if (!showsHidden_) {
        choices.erase(std::remove_if(choices.begin(), choices.end(),
                                     [](const subItem& choice) { return !isOffered(choice); }),
                      choices.end());
    }
    const int before = count();
    show(std::move(choices));
    if (count() != before) {
        Q_EMIT countChanged();
    }
}

}  // namespace rfu::qml
