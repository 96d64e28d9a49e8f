import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// The place within a recording, to move to any of its times.
Rectangle {
    id: line

    required property RecordingSource recording
    readonly property bool known: recording.duration > 0

    implicitHeight: Theme.row
    color: Theme.window

    function clock(seconds) {
        const whole = Math.max(0, Math.round(seconds))
        const two = number => String(number).padStart(2, "0")
        return Math.floor(whole / 3600) + ":" + two(Math.floor(whole / 60) % 60) + ":" + two(whole % 60)
    }

    RowLayout {
        anchors { fill: parent; leftMargin: 8; rightMargin: 8 }
        spacing: 8
        Text {
            Layout.preferredWidth: 66
            text: line.clock(line.recording.position)
            horizontalAlignment: Text.AlignRight
            font.pixelSize: Theme.smallSize + 1
            color: Theme.text
        }
        Slider {
            objectName: "timeline"
            Layout.fillWidth: true
            focusPolicy: Qt.TabFocus
            from: 0
            to: line.known ? line.recording.duration : 1
            value: line.known ? line.recording.position : 0
            onMoved: line.recording.position = value
        }
        Text {
            text: line.clock(line.known ? line.recording.duration : 0)
            font.pixelSize: Theme.smallSize + 1
            color: Theme.dim
        }
    }
}
