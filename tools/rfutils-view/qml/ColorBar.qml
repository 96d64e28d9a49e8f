import QtQuick 2.15
import RfUtils 1.0

/// The colours of the waterfall with their levels in the unit chosen.
Item {
    id: bar

    required property Measurement measurement
    required property WaterfallView waterfall

    readonly property real lowest: waterfall.lowestLevel
    readonly property real highest: waterfall.highestLevel
    readonly property int steps: 48

    visible: !isNaN(lowest) && !isNaN(highest)

    component Level: Text {
        property alias level: shown.level
        readonly property bool ofUnit: shown.shownUnit === shown.unit
        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        // Linear units have a prefix of their own at each end.
        text: shown.number + (ofUnit ? "" : "\n" + shown.shownUnit)
        font.pixelSize: Theme.smallSize
        color: Theme.dim
        LevelText {
            id: shown
            unit: bar.measurement.unit
            frequency: bar.measurement.middle
            gain: bar.measurement.gain
        }
    }

    Level { id: top; anchors.top: parent.top; level: bar.highest }
    Column {
        id: colours
        anchors { horizontalCenter: parent.horizontalCenter; top: top.bottom; bottom: low.top; topMargin: 2; bottomMargin: 2 }
        width: 14
        Repeater {
            model: bar.steps
            Rectangle {
                required property int index
                readonly property real level: bar.highest - (index + 0.5) / bar.steps * (bar.highest - bar.lowest)
                width: colours.width
                height: colours.height / bar.steps
                // The palette is named so that another one is asked.
                color: bar.waterfall.palette, bar.waterfall.levelColor(level)
            }
        }
    }
    Level { id: low; anchors { bottom: parent.bottom; bottomMargin: unit.visible ? unit.height : 0 } level: bar.lowest }
    Text {
        id: unit
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom }
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        visible: text !== ""
        text: low.ofUnit && top.ofUnit ? bar.measurement.unit : ""
        elide: Text.ElideRight
        font.pixelSize: Theme.smallSize
        color: Theme.dim
    }
}
