import QtQuick 2.15
import QtQuick.Controls 2.15

/// The unit of all levels.
ComboBox {
    id: box

    required property Measurement measurement
    required property var units

    objectName: "unit"
    implicitWidth: 104
    implicitHeight: Theme.button
    focusPolicy: Qt.TabFocus
    font.pixelSize: Theme.fontSize
    model: units
    currentIndex: units.indexOf(measurement.unit)
    onActivated: index => measurement.choose("levelUnit", box.units[index])
    popup.height: Math.min(popup.contentItem.implicitHeight + 2, 400)
}
