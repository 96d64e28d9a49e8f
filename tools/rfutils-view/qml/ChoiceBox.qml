import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// A setting of a catalogue with its choices.
RowLayout {
    id: box

    property alias catalogue: choices.catalogue
    property alias item: choices.item
    property string title: item
    /// The role that tells choices apart, and its value of the one taken.
    property alias valueRole: menu.valueRole
    property var chosen
    /// Whether the first one is taken where none is.
    property bool takesFirst: false
    /// The operator took another.
    signal taken(var value)

    spacing: 8

    function takeFirst() {
        if (takesFirst && chosen === undefined && menu.count > 0) {
            taken(menu.valueAt(0))
        }
    }
    Component.onCompleted: takeFirst()

    Text {
        Layout.fillWidth: true
        text: box.title
        elide: Text.ElideRight
        font.pixelSize: Theme.fontSize
        color: Theme.text
    }
    ComboBox {
        id: menu
        objectName: box.item
        Layout.preferredWidth: 148
        Layout.preferredHeight: Theme.button
        font.pixelSize: Theme.fontSize
        model: choices
        textRole: "label"
        valueRole: "choiceId"
        currentIndex: choices.count > 0 ? indexOfValue(box.chosen) : -1
        onCountChanged: box.takeFirst()
        onActivated: box.taken(currentValue)
    }
    ChoiceModel { id: choices }
}
