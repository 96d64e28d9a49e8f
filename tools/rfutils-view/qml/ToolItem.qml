import QtQuick 2.15
import QtQuick.Controls 2.15

/// A flat button of the tool bar: runs a command, and its hint names the key.
AbstractButton {
    id: button

    /// A row of Commands.table.
    property var command: ({ title: "", text: "", keys: [], run: () => {} })

    text: command.title
    implicitWidth: Math.max(Theme.button, label.implicitWidth + 13)
    implicitHeight: Theme.button
    focusPolicy: Qt.TabFocus
    onClicked: command.run()

    ToolTip.visible: hovered
    ToolTip.delay: 700
    ToolTip.text: command.text + (command.keys.length > 0 ? " (" + command.keys.join(", ") + ")" : "")

    background: Rectangle {
        radius: 4
        color: button.checked ? Theme.accent : button.down || button.hovered ? Theme.control : "transparent"
        border.width: button.visualFocus ? 2 : 1
        border.color: button.visualFocus ? Theme.accent : button.checked ? Theme.accent : Theme.grid
        opacity: button.enabled ? 1 : 0.5
    }
    contentItem: Text {
        id: label
        text: button.text
        font.pixelSize: Theme.fontSize
        color: button.checked ? Theme.accentText : Theme.text
        opacity: button.enabled ? 1 : 0.5
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
