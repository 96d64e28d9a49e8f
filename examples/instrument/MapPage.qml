import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

// The map with the receiver's position; a click puts a mark.
Pane {
    id: page

    property url source
    property real latitude: 47.52
    property real longitude: 8.23
    readonly property var receiver: ({ latitude: latitude, longitude: longitude, label: "Receiver" })
    property var chosen: null

    function degrees(value) {
        return value.toFixed(5) + "\u00b0"
    }

    padding: 6

    RasterMap { id: terrain; source: page.source }

    ColumnLayout {
        anchors.fill: parent
        spacing: 6
        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            color: "#223042" // where nothing was measured
            MapView {
                id: view
                objectName: "map"
                anchors.fill: parent
                map: terrain
                marks: page.chosen ? [page.receiver, page.chosen] : [page.receiver]
                markColor: "#c8283c"
                onClicked: (x, y) => page.chosen = { x: x, y: y, label: "Mark", detail: terrain.valueAt(x, y) + " m" }
            }
        }
        RowLayout {
            Label {
                objectName: "mapText"
                Layout.fillWidth: true
                elide: Text.ElideRight
                text: terrain.status === RasterMap.Error ? terrain.errorString
                    : isNaN(view.cursorX) ? "%1 x %2 cells, %3 to %4 m".arg(terrain.columns).arg(terrain.rows)
                                                .arg(terrain.smallest).arg(terrain.largest)
                    : "%1, %2   %3".arg(page.degrees(terrain.placeAt(view.cursorX, view.cursorY).latitude))
                          .arg(page.degrees(terrain.placeAt(view.cursorX, view.cursorY).longitude))
                          .arg(isNaN(view.cursorValue) ? "not measured" : view.cursorValue + " m")
            }
            Button { text: "Whole map"; enabled: !view.fitted; onClicked: view.fit() }
        }
    }
}
