#pragma once

#include <rfUtils/catalogues/subItemList.h>

#include <QPointer>
#include <QString>

#include "qml/lists/Catalogue.h"
#include "qml/support/listModel.h"

namespace rfu::qml {

/// The choices of a setting, by display sequence, then by code, then by id.
///
///     ChoiceModel { id: detectors; catalogue: choices; item: "detector" }
///     ComboBox { model: detectors; textRole: "label"; valueRole: "code" }
///
/// | role       | type   |                                                       |
/// |------------|--------|-------------------------------------------------------|
/// | `choiceId` | string | id of the choice, letter case as in the file          |
/// | `label`    | string | text for the operator                                 |
/// | `code`     | int    | number of the choice                                  |
/// | `sequence` | int    | display sequence; 0 for a choice that is not offered  |
/// | `enabled`  | bool   | whether the choice is offered                         |
class ChoiceModel : public ListModel<subItem> {
    Q_OBJECT
    /// Where the choices are from. Null at first, and again when that object ends.
    Q_PROPERTY(
        rfu::qml::Catalogue* catalogue READ catalogue WRITE setCatalogue NOTIFY catalogueChanged)
    /// The id of the setting, spelled as in the file.
    Q_PROPERTY(QString item READ item WRITE setItem NOTIFY itemChanged)
    /// Whether choices that are not offered are rows too. False at first.
    Q_PROPERTY(bool showHidden READ showsHidden WRITE setShowHidden NOTIFY showHiddenChanged)
    /// The number of rows.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    /// A model without catalogue.
    ChoiceModel();

    /// @cond notify signals
Q_SIGNALS:
    void catalogueChanged();
    void itemChanged();
    void showHiddenChanged();
    void countChanged();
    /// @endcond

private:
    Catalogue* catalogue() const { return catalogue_; }
    void setCatalogue(Catalogue* catalogue);
    QString item() const { return item_; }
    void setItem(const QString& item);
    bool showsHidden() const { return showsHidden_; }
    void setShowHidden(bool showsHidden);

    /// Shows the choices as they are now.
    void refresh();

    QPointer<Catalogue> catalogue_;
    QString item_;
    bool showsHidden_ = false;
};

}  // namespace rfu::qml
