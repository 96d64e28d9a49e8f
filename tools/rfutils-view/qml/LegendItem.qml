import QtQuick 2.15
import QtQuick.Controls 2.15

/// An entry of the legend: shows a series in its colour, or not.
AbstractButton {
    id: entry

    required property var command
    required property color colour

    text: command.title
    implicitWidth: 72
    implicitHeight: Theme.row
    checkable: false
    focusPolicy: Qt.TabFocus
    onClicked: command.run()

    ToolTip.visible: hovered
    ToolTip.delay: 700
    ToolTip.text: command.text + " (" + command.keys.join(", ") + ")"

    background: Rectangle {
        radius: 3
        color: entry.hovered ? Theme.control : "transparent"
        border { width: entry.visualFocus ? 1 : 0; color: Theme.accent }
    }
    contentItem: Item {
        Rectangle {
            id: swatch
            anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
            width: 12
            height: 12
            radius: 2
            color: entry.checked ? entry.colour : "transparent"
            border { width: 1; color: entry.checked ? entry.colour : Theme.dim }
        }
        Text {
            anchors { left: swatch.right; leftMargin: 5; right: parent.right; verticalCenter: parent.verticalCenter }
            text: entry.text
            elide: Text.ElideRight
            font.pixelSize: Theme.smallSize + 1
            color: entry.checked ? Theme.text : Theme.dim
        }
    }
}
