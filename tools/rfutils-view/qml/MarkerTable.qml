import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// The markers that are set, a row each, in the unit chosen. The active one is moved by keys and clicks.
Rectangle {
    id: table

    required property Measurement measurement

    readonly property int width1: 26
    readonly property int width2: 132

    color: Theme.panel
    implicitHeight: column.implicitHeight + 2

    component Cell: Text {
        Layout.fillWidth: true
        Layout.preferredWidth: 96
        font.pixelSize: Theme.fontSize
        color: Theme.text
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideRight
    }
    component Heading: Cell {
        font.pixelSize: Theme.smallSize
        color: Theme.dim
    }
    component LevelCell: Cell {
        property alias level: shown.level
        property alias frequency: shown.frequency
        text: shown.text
        LevelText { id: shown; unit: table.measurement.unit; gain: table.measurement.gain }
    }
    component Small: AbstractButton {
        id: small
        property string hint
        Layout.preferredWidth: 24
        Layout.preferredHeight: Theme.row - 2
        focusPolicy: Qt.NoFocus
        ToolTip.visible: hovered
        ToolTip.delay: 700
        ToolTip.text: hint
        background: Rectangle { radius: 3; color: small.hovered ? Theme.control : "transparent" }
        contentItem: Text {
            text: small.text
            color: Theme.text
            font.pixelSize: Theme.fontSize
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }

    ColumnLayout {
        id: column
        anchors { left: parent.left; right: parent.right; leftMargin: 8; rightMargin: 8 }
        spacing: 0

        RowLayout {
            Layout.preferredHeight: Theme.row - 4
            spacing: 6
            Heading { Layout.fillWidth: false; Layout.preferredWidth: table.width1; text: qsTr("Marker"); horizontalAlignment: Text.AlignLeft; elide: Text.ElideNone }
            Heading { Layout.fillWidth: false; Layout.preferredWidth: table.width2; text: qsTr("Frequency") }
            Heading { text: qsTr("Level") }
            Heading { text: qsTr("Δ to 1") }
            Heading { text: qsTr("Average") }
            Heading { text: qsTr("Mean power") }
            Heading { text: qsTr("Maximum") }
            Heading { text: qsTr("Minimum") }
            Heading { text: qsTr("Above limit"); visible: !isNaN(table.measurement.limit) }
            Item { Layout.preferredWidth: 4 * 24 + 3 * 2 }
        }

        Repeater {
            id: rows
            model: table.measurement.markers

            Rectangle {
                id: row

                required property int index
                required property real frequency
                required property real pointFrequency
                required property real level
                required property real delta
                required property real average
                required property real powerMean
                required property real maximum
                required property real minimum
                required property real above
                required property bool valid

                readonly property bool placed: !isNaN(frequency)
                /// Where the level was measured, in MHz.
                readonly property real measuredAt: table.measurement.zoom.hasFrequencies ? pointFrequency : NaN
                readonly property bool active: table.measurement.marker === index

                objectName: "marker" + (index + 1)
                visible: placed
                Layout.fillWidth: true
                Layout.preferredHeight: Theme.row
                color: active ? Theme.control : "transparent"
                radius: 3

                TapHandler { onTapped: table.measurement.marker = row.index }

                RowLayout {
                    anchors.fill: parent
                    spacing: 6
                    Text {
                        Layout.preferredWidth: table.width1
                        text: row.index + 1
                        font { pixelSize: Theme.fontSize; bold: true }
                        color: row.active ? Theme.accent : Theme.text
                        horizontalAlignment: Text.AlignHCenter
                    }
                    TextInput {
                        id: input
                        objectName: "frequency"
                        Layout.preferredWidth: table.width2
                        font.pixelSize: Theme.fontSize
                        color: Theme.text
                        selectByMouse: true
                        activeFocusOnTab: true
                        horizontalAlignment: TextInput.AlignRight
                        validator: DoubleValidator { locale: "C"; bottom: 0 }
                        readonly property string shown: table.measurement.frequencyText(row.valid ? row.pointFrequency : row.frequency)
                        text: activeFocus ? String(row.frequency) : shown
                        onAccepted: {
                            table.measurement.markers.set(row.index, Number(text))
                            focus = false
                        }
                    }
                    LevelCell { objectName: "level"; level: row.level; frequency: row.measuredAt }
                    Cell {
                        objectName: "delta"
                        text: isNaN(row.delta) ? "--" : (row.delta > 0 ? "+" : "") + row.delta.toFixed(2) + " dB"
                    }
                    LevelCell { objectName: "average"; level: row.average; frequency: row.measuredAt }
                    LevelCell { objectName: "powerMean"; level: row.powerMean; frequency: row.measuredAt }
                    LevelCell { objectName: "maximum"; level: row.maximum; frequency: row.measuredAt }
                    LevelCell { objectName: "minimum"; level: row.minimum; frequency: row.measuredAt }
                    Cell {
                        objectName: "above"
                        text: isNaN(row.above) ? "--" : row.above
                        visible: !isNaN(table.measurement.limit)
                    }
                    RowLayout {
                        spacing: 2
                        Small {
                            text: "◀"
                            hint: qsTr("next peak below")
                            onClicked: table.measurement.markers.nextPeak(row.index, -1)
                        }
                        Small {
                            text: "▲"
                            hint: qsTr("highest level")
                            onClicked: table.measurement.markers.toPeak(row.index)
                        }
                        Small {
                            text: "▶"
                            hint: qsTr("next peak above")
                            onClicked: table.measurement.markers.nextPeak(row.index, 1)
                        }
                        Small {
                            text: "✕"
                            hint: qsTr("remove the marker")
                            onClicked: table.measurement.markers.clear(row.index)
                        }
                    }
                }
            }
        }

        Text {
            readonly property int placed: {
                let count = 0
                for (let row = 0; row < rows.count; ++row) {
                    const item = rows.itemAt(row)
                    count += item !== null && item.placed ? 1 : 0
                }
                return count
            }
            visible: placed === 0
            Layout.preferredHeight: Theme.row
            text: qsTr("No marker yet: click into the spectrum, or press 1 to 6. F1 lists all keys.")
            font.pixelSize: Theme.fontSize
            color: Theme.dim
        }
    }
    Rectangle { anchors { left: parent.left; right: parent.right; top: parent.top } height: 1; color: Theme.grid }
}
