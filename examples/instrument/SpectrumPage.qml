import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

// Spectrum above, waterfall below on the same frequencies; markers and the limit beside them.
Pane {
    id: page

    property TraceModel trace: null
    property string unit: "dBm"
    property real gain: 0
    readonly property real lowest: -130
    readonly property real highest: 20
    readonly property color ink: "#dfe6ee"
    readonly property color faint: "#2d3c4d"
    readonly property color markerColor: "#ffd166"

    /// Puts the first marker on the strongest signal, and the next two on its neighbours.
    function markPeaks() {
        markers.toPeak(0)
        for (const direction of [1, -1]) {
            const row = direction > 0 ? 1 : 2
            markers.set(row, markers.get(0).frequency)
            markers.nextPeak(row, direction)
        }
    }

    padding: 6

    FrequencyZoom { id: shared; trace: page.trace }
    MarkerModel { id: markers; trace: page.trace }
    LevelText {
        id: cursorText
        unit: page.unit
        gain: page.gain
        level: spectrum.cursorLevel
        frequency: shared.cursor
    }

    RowLayout {
        anchors.fill: parent
        spacing: 8

        ColumnLayout {
            spacing: 0
            TraceView {
                id: spectrum
                objectName: "spectrum"
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredHeight: 3
                trace: page.trace
                zoom: shared
                markers: markers
                unit: page.unit
                gain: page.gain
                limit: limit.entered
                showMaximum: true
                showAverage: true
                textColor: page.ink
                gridColor: page.faint
                cursorColor: page.ink
                newestColor: "#5cc8ff"
                maximumColor: "#ff9f5a"
                averageColor: "#c49bff"
                limitColor: "#ff5d6c"
                markerColor: page.markerColor
                font.pixelSize: 12
                leftMargin: 76
                onClicked: frequency => markers.set(table.current, frequency)
            }
            WaterfallView {
                objectName: "waterfall"
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredHeight: 2
                trace: page.trace
                zoom: shared
                markers: markers
                textColor: page.ink
                gridColor: page.faint
                cursorColor: page.ink
                markerColor: page.markerColor
                font.pixelSize: 12
                leftMargin: 76
                topMargin: 4
            }
        }

        ColumnLayout {
            Layout.preferredWidth: 310
            Layout.maximumWidth: 310
            spacing: 6
            Label {
                objectName: "cursor"
                Layout.fillWidth: true
                font.bold: true
                text: isNaN(shared.cursor) ? "Point at the spectrum"
                                           : RfUnits.frequencyText(shared.cursor) + "   " + cursorText.text
            }
            MarkerTable {
                id: table
                Layout.fillWidth: true
                markers: markers
                unit: page.unit
                gain: page.gain
            }
            RowLayout {
                Button { text: "Peak"; onClicked: markers.toPeak(table.current); Layout.fillWidth: true }
                Button { text: "\u25c0"; onClicked: markers.nextPeak(table.current, -1); Layout.preferredWidth: 44 }
                Button { text: "\u25b6"; onClicked: markers.nextPeak(table.current, 1); Layout.preferredWidth: 44 }
                Button { text: "Clear"; onClicked: markers.clear(table.current); Layout.fillWidth: true }
            }
            Item { Layout.fillHeight: true }
            LimitField {
                id: limit
                Layout.fillWidth: true
                unit: page.unit
                gain: page.gain
                frequency: (shared.wholeLow + shared.wholeHigh) / 2
                lowest: page.lowest
                highest: page.highest
                verdict: isNaN(entered) ? "" : spectrum.verdict === TraceView.Fail ? "FAIL" : "PASS"
            }
            Button {
                text: "Clear holds"
                Layout.fillWidth: true
                onClicked: page.trace.clearHolds()
            }
        }
    }
}
