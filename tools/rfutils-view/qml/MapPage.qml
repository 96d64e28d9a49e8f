import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// A raster map with a position on it: by a click, or by its coordinates.
Rectangle {
    id: page

    required property Commands commands
    property alias source: map.source
    /// Map coordinates of the position; NaN for none.
    property real markX: NaN
    property real markY: NaN
    readonly property bool marked: !isNaN(markX) && !isNaN(markY)
    readonly property alias map: map
    readonly property alias view: view

    readonly property string cursorText: [earthly(view.cursorX, view.cursorY),
        place(view.cursorX, view.cursorY, view.cursorValue)].filter(text => text !== "").join("   ")

    color: Theme.control

    function numberText(number) {
        return isNaN(number) ? "" : String(Number(number.toFixed(2)))
    }

    /// A place and the value there, in a line.
    function place(x, y, value) {
        return isNaN(x) || isNaN(y) ? ""
            : numberText(x) + "  " + numberText(y) + "   " + (isNaN(value) ? qsTr("no value") : numberText(value))
    }

    /// Where on the Earth a place is; empty where the map does not tell.
    function earthly(x, y) {
        const at = map.hasPlaces && !isNaN(x) ? map.placeAt(x, y) : {}
        return at.latitude === undefined || isNaN(at.latitude) ? ""
            : RfUnits.angleText(at.latitude) + "  " + RfUnits.angleText(at.longitude)
    }

    component Label: Text {
        font.pixelSize: Theme.fontSize
        color: Theme.dim
        verticalAlignment: Text.AlignVCenter
    }
    component Coordinate: TextField {
        property real number
        signal entered(real number)
        Layout.preferredWidth: 110
        Layout.preferredHeight: Theme.button
        font.pixelSize: Theme.fontSize
        horizontalAlignment: TextInput.AlignRight
        selectByMouse: true
        validator: DoubleValidator { locale: "C" }
        text: page.numberText(number)
        onEditingFinished: entered(text === "" ? NaN : Number(text))
    }

    RasterMap { id: map }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        MapView {
            id: view
            objectName: "map"
            Layout.fillWidth: true
            Layout.fillHeight: true
            activeFocusOnTab: true
            map: map
            font.pixelSize: Theme.fontSize
            textColor: Theme.text
            labelColor: Theme.panel
            markColor: Theme.accent
            marks: page.marked ? [{ x: page.markX, y: page.markY, label: position.text, detail: page.earthly(page.markX, page.markY)
                || page.numberText(page.markX) + "  " + page.numberText(page.markY) }] : []
            onClicked: (x, y) => {
                page.markX = x
                page.markY = y
            }

            Text {
                anchors.centerIn: parent
                width: parent.width - 40
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                visible: text !== ""
                text: map.status === RasterMap.Error ? map.errorString
                    : map.status === RasterMap.Loading ? qsTr("reading the map")
                    : map.status === RasterMap.Null ? qsTr("No map: open an ASCII grid (.asc) or a BIL raster (.bil, .hdr).") : ""
                font.pixelSize: Theme.fontSize + 1
                color: map.status === RasterMap.Error ? Theme.fail : Theme.dim
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: Theme.button + 10
            color: Theme.panel
            RowLayout {
                anchors { fill: parent; leftMargin: 8; rightMargin: 8 }
                spacing: 8
                ToolItem { command: page.commands.of("openMap") }
                Label {
                    visible: map.columns > 0
                    text: qsTr("%1 × %2 cells").arg(map.columns).arg(map.rows)
                }
                Item { Layout.fillWidth: true }
                Label { text: qsTr("Position") }
                Coordinate {
                    objectName: "positionX"
                    placeholderText: "x"
                    number: page.markX
                    onEntered: number => { page.markX = number }
                }
                Coordinate {
                    objectName: "positionY"
                    placeholderText: "y"
                    number: page.markY
                    onEntered: number => { page.markY = number }
                }
                Label {
                    id: position
                    objectName: "positionValue"
                    Layout.preferredWidth: 110
                    color: Theme.text
                    font.bold: true
                    // The revision is named so that a new map is asked again.
                    readonly property real value: page.marked && map.revision >= 0
                        ? map.valueAt(page.markX, page.markY) : NaN
                    text: !page.marked ? "" : isNaN(value) ? qsTr("no value") : page.numberText(value)
                }
            }
            Rectangle { anchors { left: parent.left; right: parent.right; top: parent.top } height: 1; color: Theme.grid }
        }
    }
}
