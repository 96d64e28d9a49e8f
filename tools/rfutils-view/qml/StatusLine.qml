import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// One line: the recording and how far it is read, the axis, and what is under the pointer.
Rectangle {
    id: line

    required property Measurement measurement
    property string cursorText: ""

    readonly property RecordingSource recording: measurement.recording
    readonly property bool reading: recording.status === RecordingSource.Loading

    implicitHeight: Theme.row + 2
    color: Theme.window

    function nameOf(url) {
        return decodeURIComponent(String(url).replace(/^.*[/:]/, ""))
    }

    component Part: Text {
        font.pixelSize: Theme.smallSize + 1
        color: Theme.dim
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }

    RowLayout {
        anchors { fill: parent; leftMargin: 8; rightMargin: 8 }
        spacing: 12

        Rectangle {
            Layout.preferredWidth: 8
            Layout.preferredHeight: 8
            radius: 4
            color: line.recording.status === RecordingSource.Error ? Theme.fail
                 : line.measurement.paused ? Theme.limit : line.reading ? Theme.pass : Theme.dim
        }
        Part {
            objectName: "state"
            Layout.maximumWidth: line.width * 0.4
            color: line.recording.status === RecordingSource.Error ? Theme.fail : Theme.text
            text: line.recording.errorString !== "" ? line.recording.errorString
                : line.recording.program !== "" ? line.recording.program
                : String(line.recording.source) === "" ? qsTr("no recording: Ctrl+O opens one")
                : line.nameOf(line.recording.source)
            HoverHandler { id: hover }
            ToolTip.visible: hover.hovered && ToolTip.text !== ""
            ToolTip.text: [line.recording.errorString, line.recording.note].filter(text => text !== "").join("\n")
        }
        ProgressBar {
            id: bar
            objectName: "progress"
            visible: line.reading && !line.recording.live && !isNaN(line.recording.progress)
            value: visible ? line.recording.progress : 0
            Layout.preferredWidth: 90
            Layout.preferredHeight: 8
            background: Rectangle { radius: 3; color: Theme.control }
            contentItem: Item {
                Rectangle { width: bar.visualPosition * parent.width; height: parent.height; radius: 3; color: Theme.accent }
            }
        }
        Part {
            objectName: "sweeps"
            text: qsTr("%L1 sweeps").arg(line.measurement.trace.total)
                + (line.recording.brokenLines > 0 ? " · " + qsTr("%L1 broken lines").arg(line.recording.brokenLines) : "")
        }
        Part {
            visible: line.measurement.zoom.wholeHigh > line.measurement.zoom.wholeLow
            text: qsTr("%1 … %2 · %L3 points").arg(line.measurement.frequencyText(line.measurement.zoom.low))
                .arg(line.measurement.frequencyText(line.measurement.zoom.high)).arg(line.measurement.trace.points)
        }
        Item { Layout.fillWidth: true }
        Part { objectName: "cursor"; color: Theme.text; text: line.cursorText }
    }
    Rectangle { anchors { left: parent.left; right: parent.right; top: parent.top } height: 1; color: Theme.grid }
}
