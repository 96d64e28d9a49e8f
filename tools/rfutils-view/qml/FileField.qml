import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

/// A file that the operator may choose or do without.
RowLayout {
    id: field

    property string title
    property url file
    readonly property bool given: String(file) !== ""
    signal choose()
    signal remove()

    spacing: 8

    Text {
        Layout.fillWidth: true
        text: field.title
        elide: Text.ElideRight
        font.pixelSize: Theme.fontSize
        color: Theme.text
    }
    ToolItem {
        Layout.preferredWidth: field.given ? 112 : 148
        text: field.given ? decodeURIComponent(String(field.file).replace(/^.*\//, "")) : qsTr("none")
        command: ({ title: "", text: qsTr("choose a file"), keys: [], run: () => field.choose() })
    }
    ToolItem {
        visible: field.given
        Layout.preferredWidth: 28
        text: "✕"
        command: ({ title: "", text: qsTr("do without"), keys: [], run: () => field.remove() })
    }
}
