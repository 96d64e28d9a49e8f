import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

// The markers with their levels in the operator's unit; a click chooses the one that buttons and clicks move.
Column {
    id: table

    property MarkerModel markers: null
    property string unit: "dBm"
    property real gain: 0
    property int current: 0

    Repeater {
        model: table.markers
        delegate: ItemDelegate {
            id: row

            required property int index
            required property real frequency
            required property real level
            required property real delta
            required property bool valid

            objectName: "marker" + index
            width: table.width
            height: 34
            padding: 6
            highlighted: index === table.current
            onClicked: table.current = index
            text: (isNaN(frequency) ? "--" : RfUnits.frequencyText(frequency)) + " " + levelText.text // for screen readers
            contentItem: RowLayout {
                spacing: 6
                Label {
                    Layout.preferredWidth: 18
                    font.bold: true
                    color: "#ffd166"
                    text: row.index + 1
                }
                Label {
                    Layout.fillWidth: true
                    text: isNaN(row.frequency) ? "--" : RfUnits.frequencyText(row.frequency)
                }
                Label { text: levelText.text }
                Label {
                    Layout.preferredWidth: 66
                    horizontalAlignment: Text.AlignRight
                    opacity: 0.8
                    text: row.index === 0 || !row.valid || isNaN(row.delta) ? "" : Number(row.delta).toFixed(1) + " dB"
                }
                LevelText {
                    id: levelText
                    level: row.valid ? row.level : NaN
                    unit: table.unit
                    gain: table.gain
                    frequency: row.frequency
                }
            }
        }
    }
}
