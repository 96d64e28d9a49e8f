import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

// A field for a limit in the operator's unit, with the range that it may have, or what is wrong with the text.
ColumnLayout {
    id: limit

    property string unit: "dBm"
    property real gain: 0
    property real frequency: NaN
    property real lowest: NaN
    property real highest: NaN
    property string verdict: ""
    /// The limit in dBm; NaN for none.
    property real entered: NaN

    // Another unit shows the same level.
    onUnitChanged: Qt.callLater(() => field.text = isNaN(limit.entered) ? "" : shown.text)

    LevelText {
        id: shown
        level: limit.entered
        unit: limit.unit
        gain: limit.gain
        frequency: limit.frequency
    }
    RangeHint {
        id: range
        type: ({
            "dBm": RangeHint.Dbm, "dBV": RangeHint.Dbv, "dBmV": RangeHint.Dbmv, "dBuV": RangeHint.Dbuv,
            "V": RangeHint.Volt, "W": RangeHint.Watt, "dBuV/m": RangeHint.DbuvPerMeter, "dBmV/m": RangeHint.DbmvPerMeter,
            "dBV/m": RangeHint.DbvPerMeter, "V/m": RangeHint.VoltPerMeter, "W/m^2": RangeHint.WattPerSquareMeter,
            "dBm/m^2": RangeHint.DbmPerSquareMeter
        })[limit.unit]
        min: limit.lowest
        max: limit.highest
        gain: limit.gain
        frequency: limit.frequency
    }

    RowLayout {
        Label { text: "Limit" }
        TextField {
            id: field
            objectName: "limit"
            Layout.fillWidth: true
            placeholderText: "none"
            validator: LevelEntry {
                id: entry
                unit: limit.unit
                gain: limit.gain
                frequency: limit.frequency
                min: limit.lowest
                max: limit.highest
            }
            onTextChanged: entry.text = text
            onTextEdited: {
                entry.text = text
                limit.entered = entry.acceptable ? entry.level : NaN
            }
        }
        Label {
            objectName: "verdict"
            Layout.preferredWidth: 40
            font.bold: true
            color: text === "FAIL" ? "#ff5d6c" : "#6fd08c"
            text: limit.verdict
        }
    }
    Label {
        objectName: "range"
        Layout.fillWidth: true
        font.pixelSize: 12
        wrapMode: Text.Wrap
        text: entry.hint ? field.text + " " + entry.hint : range.text
    }
}
