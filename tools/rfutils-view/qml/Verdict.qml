import QtQuick 2.15

/// The light that tells whether the levels keep to the limit.
Rectangle {
    id: light

    property bool judged: false
    property bool passed: false

    visible: judged
    implicitWidth: 64
    implicitHeight: Theme.row
    radius: 4
    color: passed ? Theme.pass : Theme.fail

    Text {
        objectName: "verdict"
        anchors.centerIn: parent
        text: light.passed ? qsTr("PASS") : qsTr("FAIL")
        font { pixelSize: Theme.fontSize; bold: true }
        color: Theme.dark ? "#08131f" : "#ffffff"
    }
}
