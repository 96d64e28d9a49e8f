import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// The settings: those of the viewer and of the instrument, each from a catalogue, and the levels.
Rectangle {
    id: panel

    required property Measurement measurement
    required property var page
    /// The instrument's catalogue; none if empty.
    property url instrumentFile
    readonly property alias instrument: instrument

    objectName: "settings"
    color: Theme.panel
    implicitWidth: 296

    /// What settings of the viewer's catalogue are called, in the order of the panel.
    readonly property var settings: [
        { item: "levelUnit", title: qsTr("Unit") },
        { item: "palette", title: qsTr("Colours") },
        { item: "judged", title: qsTr("Limit is for") },
        { item: "rowHeight", title: qsTr("Row height") },
        { item: "depth", title: qsTr("Sweeps kept") },
        { item: "speed", title: qsTr("Pace of files") },
        { item: "updateInterval", title: qsTr("Pictures per s") },
        { item: "theme", title: qsTr("Theme") }
    ]

    component Title: Text {
        Layout.fillWidth: true
        Layout.topMargin: 6
        font { pixelSize: Theme.fontSize; bold: true }
        color: Theme.accent
    }

    Catalogue {
        id: own
        //: The file with the labels of the settings, beside the others
        source: "../" + qsTr("catalogue.json")
    }
    Catalogue { id: instrument; source: panel.instrumentFile }

    Flickable {
        id: flick
        anchors { fill: parent; leftMargin: 12; topMargin: 12; bottomMargin: 12; rightMargin: 4 }
        contentWidth: width
        contentHeight: column.implicitHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        ColumnLayout {
            id: column
            width: flick.width - 10
            spacing: 6

            Title { text: qsTr("View"); Layout.topMargin: 0 }
            Repeater {
                model: panel.settings
                ChoiceBox {
                    required property var modelData
                    catalogue: own
                    item: modelData.item
                    title: modelData.title
                    chosen: panel.measurement.chosen[modelData.item]
                    onTaken: value => panel.measurement.choose(modelData.item, value)
                }
            }

            Title { text: qsTr("Levels") }
            LevelField {
                objectName: "limit"
                measurement: panel.measurement
                title: qsTr("Limit")
                placeholder: qsTr("none")
                level: panel.measurement.limit
                onEntered: level => { panel.measurement.limit = level }
            }
            FileField {
                title: qsTr("Mask")
                file: panel.measurement.mask
                onChoose: panel.page.openMask()
                onRemove: panel.measurement.mask = ""
            }
            LevelField {
                measurement: panel.measurement
                title: qsTr("Spectrum from")
                level: panel.measurement.minLevel
                onEntered: level => { panel.measurement.minLevel = level }
            }
            LevelField {
                measurement: panel.measurement
                title: qsTr("Spectrum to")
                level: panel.measurement.maxLevel
                onEntered: level => { panel.measurement.maxLevel = level }
            }
            LevelField {
                measurement: panel.measurement
                title: qsTr("Colours from")
                level: panel.measurement.coldest
                onEntered: level => { panel.measurement.coldest = level }
            }
            LevelField {
                measurement: panel.measurement
                title: qsTr("Colours to")
                level: panel.measurement.hottest
                onEntered: level => { panel.measurement.hottest = level }
            }
            RowLayout {
                spacing: 8
                Text {
                    Layout.fillWidth: true
                    text: qsTr("Gain in dBi")
                    font.pixelSize: Theme.fontSize
                    color: Theme.text
                }
                TextField {
                    objectName: "gain"
                    Layout.preferredWidth: 148
                    Layout.preferredHeight: Theme.button
                    font.pixelSize: Theme.fontSize
                    horizontalAlignment: TextInput.AlignRight
                    selectByMouse: true
                    validator: DoubleValidator { locale: "C"; bottom: -100; top: 100 }
                    text: String(panel.measurement.gain)
                    onEditingFinished: panel.measurement.gain = Number(text)
                }
            }

            Title { text: qsTr("Instrument") }
            FileField {
                title: qsTr("Catalogue")
                file: panel.instrumentFile
                onChoose: panel.page.openCatalogue()
                onRemove: panel.page.catalogueFile = ""
            }
            Text {
                Layout.fillWidth: true
                visible: text !== ""
                text: instrument.errorString
                wrapMode: Text.Wrap
                elide: Text.ElideRight
                maximumLineCount: 2
                Layout.preferredHeight: 2 * Theme.smallSize + 6
                font.pixelSize: Theme.smallSize
                color: Theme.fail
            }
            Repeater {
                model: instrument.items
                ChoiceBox {
                    required property string modelData
                    catalogue: instrument
                    item: modelData
                    valueRole: "code"
                    takesFirst: true
                    chosen: panel.measurement.codes[modelData]
                    onTaken: value => panel.measurement.setCode(modelData, value)
                }
            }
        }
    }
    Rectangle { anchors { left: parent.left; top: parent.top; bottom: parent.bottom } width: 1; color: Theme.grid }
}
