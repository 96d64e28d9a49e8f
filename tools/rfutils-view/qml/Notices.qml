import QtQuick 2.15
import RfUtils 1.0

/// Short texts that vanish by themselves.
Column {
    id: notices

    required property ToastModel notices

    spacing: 6

    Repeater {
        model: notices.notices
        Rectangle {
            id: notice
            required property string text
            width: label.implicitWidth + 24
            height: label.implicitHeight + 14
            radius: 5
            color: Theme.control
            border.color: Theme.accent
            Text {
                id: label
                anchors.centerIn: parent
                text: notice.text
                font.pixelSize: Theme.fontSize
                color: Theme.text
            }
        }
    }
    Timer {
        interval: 4000
        running: notices.notices.count > 0
        onTriggered: notices.notices.clear()
    }
}
