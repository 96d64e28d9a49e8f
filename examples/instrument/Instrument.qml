import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

// The panel of a receiver: spectrum, waterfall, markers, map and setups, made of RfUtils and Qt Quick Controls alone.
//
//     qmlscene examples/instrument/Instrument.qml
Page {
    id: panel

    property url recording: "../data/fm_band.csv"
    property url catalogueFile: "../data/catalogue.json"
    property url setupFile: "../data/setups.json"
    property url mapFile: "../data/terrain.asc"
    /// The unit of all levels, and the antenna that field units need.
    readonly property string unit: units.currentText
    readonly property real antennaGain: 2.1
    readonly property color buttonColor: "#243140"
    readonly property color chosenColor: "#2f81c4"

    width: 1024
    height: 600
    font.pixelSize: 14
    palette {
        window: "#12181f"
        windowText: "#dfe6ee"
        base: "#0c1116"
        text: "#dfe6ee"
        button: panel.buttonColor
        buttonText: "#dfe6ee"
        brightText: "#ffffff"
        highlight: panel.chosenColor
        highlightedText: "#ffffff"
        mid: "#3a4a5b"
        midlight: "#2d3c4d"
        light: "#4a5d71"
        dark: "#8fa3b8"
    }

    Catalogue {
        id: catalogue
        source: panel.catalogueFile
        onStatusChanged: if (status === Catalogue.Error) panel.notify(errorString)
    }
    ChoiceModel { id: detectors; catalogue: catalogue; item: "detector" }

    TraceModel { id: sweeps; depth: 400 }
    RecordingSource {
        id: receiver
        objectName: "receiver"
        trace: sweeps
        source: panel.recording
        onStatusChanged: {
            if (status === RecordingSource.Error) {
                panel.notify(errorString)
            } else if (status === RecordingSource.Ready) {
                panel.notify(receiver.sweeps + " sweeps read")
                spectrum.markPeaks()
            }
        }
    }

    ToastModel { id: toasts }
    function notify(text) {
        if (toasts.full) {
            toasts.clear()
        }
        toasts.push(text)
    }

    header: Pane {
        padding: 8
        RowLayout {
            anchors.fill: parent
            spacing: 10
            TabBar {
                id: pages
                objectName: "pages"
                Layout.preferredWidth: 300
                palette.window: panel.chosenColor
                palette.dark: panel.buttonColor
                TabButton { text: "Spectrum" }
                TabButton { text: "Map" }
                TabButton { text: "Setups" }
            }
            Item { Layout.fillWidth: true }
            Label { text: "Detector" }
            ComboBox {
                objectName: "detectors"
                Layout.preferredWidth: 150
                model: detectors
                textRole: "label"
                valueRole: "code"
                onCountChanged: currentIndex = Math.max(currentIndex, 0)
                onActivated: panel.notify("Detector: " + currentText)
            }
            Label { text: "Unit" }
            ComboBox {
                id: units
                objectName: "units"
                Layout.preferredWidth: 110
                model: [].concat(RfUnits.levelUnits, RfUnits.fieldUnits)
            }
        }
    }

    StackLayout {
        anchors.fill: parent
        currentIndex: pages.currentIndex
        SpectrumPage {
            id: spectrum
            trace: sweeps
            unit: panel.unit
            gain: panel.antennaGain
        }
        MapPage { source: panel.mapFile }
        SetupPage { source: panel.setupFile; onChosen: label => panel.notify("Setup: " + label) }
    }

    footer: Pane {
        padding: 6
        RowLayout {
            anchors.fill: parent
            spacing: 12
            ListView {
                id: notices
                objectName: "notices"
                Layout.fillWidth: true
                implicitHeight: 20
                clip: true
                interactive: false
                model: toasts
                onCountChanged: currentIndex = count - 1 // the newest is shown
                highlightMoveDuration: 0
                delegate: Label {
                    required text
                    width: notices.width
                    elide: Text.ElideRight
                }
            }
            Label { objectName: "sweeps"; text: "%1 of %2 sweeps".arg(sweeps.count).arg(sweeps.total) }
        }
    }
}
