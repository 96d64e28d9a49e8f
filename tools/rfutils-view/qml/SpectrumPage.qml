import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// Spectrum above, waterfall below, on one axis of frequencies.
Item {
    id: page

    required property Measurement measurement
    required property Commands commands

    readonly property alias spectrum: spectrum
    readonly property alias waterfall: waterfall

    /// Both plots begin and end at the same pixels.
    readonly property int plotLeft: 82
    readonly property int plotRight: 84

    readonly property string cursorText: {
        if (isNaN(measurement.zoom.cursor)) {
            return ""
        }
        const parts = [measurement.frequencyText(measurement.zoom.cursor)]
        if (waterfall.cursorTime !== "") {
            parts.push(waterfall.cursorTime)
        }
        if (cursorLevel.valid) {
            parts.push(cursorLevel.text)
        }
        return parts.join("   ")
    }

    /// Gives the spectrum that many more pixels.
    function divide(pixels) {
        upper.SplitView.preferredHeight = Math.min(Math.max(upper.height + pixels, 90), split.height - 67)
    }
    function scroll(pages) {
        const rows = Math.max(1, Math.floor((waterfall.height - 20) / waterfall.rowHeight * 0.8))
        waterfall.scroll = Math.min(Math.max(waterfall.scroll + pages * rows, 0), Math.max(bar.last, 0))
    }

    LevelText {
        id: cursorLevel
        level: isNaN(waterfall.cursorLevel) ? spectrum.cursorLevel : waterfall.cursorLevel
        unit: page.measurement.unit
        frequency: page.measurement.zoom.cursor
        gain: page.measurement.gain
    }

    SplitView {
        id: split
        anchors.fill: parent
        orientation: Qt.Vertical

        handle: Rectangle {
            implicitHeight: 7
            color: SplitHandle.pressed || SplitHandle.hovered ? Theme.accent : Theme.window
            Rectangle {
                anchors.centerIn: parent
                width: 44
                height: 3
                radius: 1
                color: Theme.dim
            }
        }

        Item {
            id: upper
            SplitView.preferredHeight: split.height * 0.5
            SplitView.minimumHeight: 90

            Rectangle { anchors.fill: parent; color: Theme.plot }
            TraceView {
                id: spectrum
                objectName: "spectrum"
                anchors.fill: parent
                focus: true
                activeFocusOnTab: true
                trace: page.measurement.trace
                zoom: page.measurement.zoom
                markers: page.measurement.markers
                unit: page.measurement.unit
                gain: page.measurement.gain
                minLevel: page.measurement.minLevel
                maxLevel: page.measurement.maxLevel
                showNewest: page.measurement.showNewest
                showMaximum: page.measurement.showMaximum
                showMinimum: page.measurement.showMinimum
                showAverage: page.measurement.showAverage
                showFill: page.measurement.showFill
                limit: page.measurement.limit
                judged: Number(page.measurement.chosen.judged)
                mask: page.measurement.mask
                leftMargin: page.plotLeft
                rightMargin: page.plotRight
                topMargin: 12
                bottomMargin: 24
                font.pixelSize: Theme.smallSize
                backgroundColor: Theme.plot
                gridColor: Theme.grid
                textColor: Theme.dim
                cursorColor: Theme.cursor
                newestColor: Theme.newest
                maximumColor: Theme.maximum
                minimumColor: Theme.minimum
                averageColor: Theme.average
                fillColor: Theme.fill
                limitColor: Theme.limit
                onClicked: frequency => {
                    forceActiveFocus()
                    page.measurement.placeMarker(frequency)
                }
            }

            Column {
                anchors { right: parent.right; rightMargin: 6; top: parent.top; topMargin: 10 }
                spacing: 1
                Verdict {
                    objectName: "light"
                    width: 72
                    judged: spectrum.verdict !== TraceView.None
                    passed: spectrum.verdict === TraceView.Pass
                }
                LegendItem { command: page.commands.of("newest"); colour: Theme.newest; checked: page.measurement.showNewest }
                LegendItem { command: page.commands.of("maximum"); colour: Theme.maximum; checked: page.measurement.showMaximum }
                LegendItem { command: page.commands.of("average"); colour: Theme.average; checked: page.measurement.showAverage }
                LegendItem { command: page.commands.of("minimum"); colour: Theme.minimum; checked: page.measurement.showMinimum }
                LegendItem { command: page.commands.of("fill"); colour: Theme.dim; checked: page.measurement.showFill }
                ToolItem { width: 72; height: Theme.row + 2; command: page.commands.of("clearHolds") }
            }
        }

        Item {
            SplitView.fillHeight: true
            SplitView.minimumHeight: 60

            Rectangle { anchors.fill: parent; color: Theme.plot }
            WaterfallView {
                id: waterfall
                objectName: "waterfall"
                anchors.fill: parent
                activeFocusOnTab: true
                trace: page.measurement.trace
                zoom: page.measurement.zoom
                markers: page.measurement.markers
                palette: page.measurement.palette
                minLevel: page.measurement.coldest
                maxLevel: page.measurement.hottest
                paused: page.measurement.paused
                rowHeight: page.measurement.rowHeight
                leftMargin: page.plotLeft
                rightMargin: page.plotRight
                topMargin: 4
                bottomMargin: 4
                font.pixelSize: Theme.smallSize
                backgroundColor: Theme.plot
                gridColor: Theme.grid
                textColor: Theme.dim
                cursorColor: Theme.cursor
                onClicked: frequency => {
                    forceActiveFocus()
                    page.measurement.placeMarker(frequency)
                }
            }

            ScrollBar {
                id: bar
                /// The largest scroll that still fills the view.
                readonly property int shown: Math.max(1, Math.floor((waterfall.height - 8) / waterfall.rowHeight))
                readonly property int last: Math.max(0, page.measurement.trace.count - shown)
                anchors { right: parent.right; rightMargin: page.plotRight - 14; top: parent.top; bottom: parent.bottom; margins: 4 }
                width: 12
                visible: last > 0
                policy: ScrollBar.AlwaysOn
                orientation: Qt.Vertical
                size: shown / Math.max(shown, page.measurement.trace.count)
                position: waterfall.scroll / Math.max(shown, page.measurement.trace.count)
                onPositionChanged: {
                    if (pressed) {
                        waterfall.scroll = Math.round(position * page.measurement.trace.count)
                    }
                }
            }
            ColorBar {
                anchors { right: parent.right; rightMargin: 4; top: parent.top; bottom: parent.bottom; topMargin: 6; bottomMargin: 6 }
                width: page.plotRight - 26
                measurement: page.measurement
                waterfall: waterfall
            }
        }
    }
}
