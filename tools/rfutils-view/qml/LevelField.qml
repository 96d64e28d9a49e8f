import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// A level that the operator may enter in any unit; an empty field is none (NaN).
ColumnLayout {
    id: field

    required property Measurement measurement
    property string title
    property string placeholder: qsTr("automatic")
    /// In dBm.
    property real level: NaN
    signal entered(real level)

    spacing: 2

    function accept() {
        if (input.text === "") {
            entered(NaN)
        } else if (entry.acceptable) {
            entered(entry.level)
        }
    }

    RowLayout {
        spacing: 8
        Text {
            Layout.fillWidth: true
            text: field.title
            elide: Text.ElideRight
            font.pixelSize: Theme.fontSize
            color: Theme.text
        }
        TextField {
            id: input
            objectName: field.objectName + "Input"
            Layout.preferredWidth: 148
            Layout.preferredHeight: Theme.button
            font.pixelSize: Theme.fontSize
            horizontalAlignment: TextInput.AlignRight
            selectByMouse: true
            placeholderText: field.placeholder
            text: shown.valid ? shown.text : ""
            onEditingFinished: field.accept()
        }
    }
    Text {
        Layout.fillWidth: true
        visible: input.activeFocus && entry.hint !== ""
        text: entry.hint
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 2
        Layout.preferredHeight: 2 * Theme.smallSize + 6
        font.pixelSize: Theme.smallSize
        color: Theme.fail
    }
    LevelText {
        id: shown
        level: field.level
        unit: field.measurement.unit
        frequency: field.measurement.middle
        gain: field.measurement.gain
    }
    LevelEntry {
        id: entry
        text: input.text
        unit: field.measurement.unit
        frequency: field.measurement.middle
        gain: field.measurement.gain
    }
}
