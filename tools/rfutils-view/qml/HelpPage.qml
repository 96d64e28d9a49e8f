import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

/// All keys and gestures.
Popup {
    id: help

    required property Commands commands

    readonly property var gestures: [
        { keys: qsTr("wheel, pinch"), text: qsTr("zoom at the pointer; with Ctrl faster") },
        { keys: qsTr("drag"), text: qsTr("move along the band") },
        { keys: qsTr("double click"), text: qsTr("show the whole band") },
        { keys: qsTr("click"), text: qsTr("place the active marker") },
        { keys: "← →", text: qsTr("move along the band") },
        { keys: "↑ ↓  + −", text: qsTr("zoom") },
        { keys: qsTr("drag the bar"), text: qsTr("divide spectrum and waterfall") },
        { keys: "Tab", text: qsTr("through buttons and fields") }
    ]
    /// Groups in the order of the table, the gestures first. The six keys of the markers are one row.
    readonly property var columns: {
        const table = commands.table.filter(row => !/^marker[2-6]$/.test(row.name))
        const names = table.map(row => row.group)
        const groups = [{ name: qsTr("Mouse, touch, arrows"), rows: gestures }].concat(names.filter((name, index) => names.indexOf(name) === index).map(name => ({
            name: name,
            rows: table.filter(row => row.group === name).map(row => row.name === "marker1"
                ? { keys: "1 … 6", text: qsTr("take a marker; one that is not set goes to the highest level") }
                : { keys: row.keys.join("  "), text: row.text })
        })))
        // Each group goes below the shortest column.
        const columns = [0, 1, 2].map(() => ({ length: 0, groups: [] }))
        groups.forEach(group => {
            const shortest = columns.reduce((a, b) => b.length < a.length ? b : a)
            shortest.groups.push(group)
            shortest.length += group.rows.length + 2
        })
        return columns.map(column => column.groups)
    }

    objectName: "help"
    modal: true
    focus: true
    padding: 16
    closePolicy: Popup.CloseOnPressOutside | Popup.CloseOnEscape
    background: Rectangle { color: Theme.panel; border.color: Theme.grid; radius: 6 }

    component Line: Text {
        property bool isKey: false
        font { pixelSize: Theme.smallSize + 1; bold: isKey }
        color: Theme.text
        wrapMode: Text.Wrap
    }
    component Group: Column {
        id: group
        property string name
        property var rows
        spacing: 2
        Text {
            text: group.name
            font { pixelSize: Theme.fontSize + 1; bold: true }
            color: Theme.accent
            bottomPadding: 3
        }
        Repeater {
            model: group.rows
            Row {
                id: row
                required property var modelData
                spacing: 8
                Line { width: 92; isKey: true; text: row.modelData.keys }
                Line { width: group.width - 100; text: row.modelData.text }
            }
        }
    }

    contentItem: Flickable {
        implicitHeight: columns.height
        contentHeight: columns.height
        contentWidth: width
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        // Those of the window wait while this page is open.
        Shortcut { enabled: help.opened; sequences: ["F1", "?"]; onActivated: help.close() }

        Row {
            id: columns
            width: parent.width
            spacing: 18

            Repeater {
                model: help.columns
                Column {
                    id: column
                    required property var modelData
                    width: (columns.width - 2 * columns.spacing) / 3
                    spacing: 12
                    Repeater {
                        model: column.modelData
                        Group {
                            required property var modelData
                            width: column.width
                            name: modelData.name
                            rows: modelData.rows
                        }
                    }
                }
            }
        }
    }
}
