import QtQml 2.15
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import Qt.labs.platform 1.1 as Platform
import RfUtils 1.0

/// The window of the viewer.
ApplicationWindow {
    id: window

    // What the command line gives.
    property alias source: measurement.source
    /// A program that records to its standard output. In its arguments, {item} stands for the code that is chosen of
    /// that setting of the instrument's catalogue.
    property alias program: measurement.program
    property alias programArguments: measurement.programArguments
    property url catalogueFile
    property alias mapFile: mapPage.source
    property alias maskFile: measurement.mask
    property url pictureFile
    property string startUnit: "dBm"
    property alias startGain: measurement.gain
    property alias startLimit: measurement.limit
    property var startMarkers: []
    property alias startWidth: window.width
    property alias startHeight: window.height
    property bool startDark: true
    /// Why the program ends without what its command line asks for: main writes it to standard error.
    property string failure

    /// Whether the operator may choose files.
    property bool choosesFiles: true
    property bool showSettings: false
    property bool showMap: false
    property bool showTable: true
    property bool showHelp: false

    readonly property alias measurement: measurement
    readonly property alias commands: commands
    readonly property alias spectrumPage: spectrumPage
    readonly property alias mapPage: mapPage

    visible: true
    width: 1280
    height: 720
    minimumWidth: 800
    minimumHeight: 400
    title: (recordingName === "" ? "" : recordingName + " – ") + qsTr("rfutils viewer")
    color: Theme.window

    readonly property string recordingName: measurement.program !== "" ? measurement.program
        : decodeURIComponent(String(measurement.source).replace(/^.*[/:]/, ""))

    palette {
        window: Theme.panel
        windowText: Theme.text
        base: Theme.plot
        alternateBase: Theme.control
        text: Theme.text
        button: Theme.control
        buttonText: Theme.text
        brightText: Theme.text
        highlight: Theme.accent
        highlightedText: Theme.accentText
        light: Theme.control
        midlight: Theme.control
        mid: Theme.dim
        dark: Theme.grid
        shadow: Theme.window
        toolTipBase: Theme.panel
        toolTipText: Theme.text
    }

    function open() { openDialog.choose(qsTr("Open a recording"), file => openRecording(file)) }
    function openMask() { openDialog.choose(qsTr("Open a mask"), file => { measurement.mask = file }) }
    function openCatalogue() { openDialog.choose(qsTr("Open a catalogue"), file => { catalogueFile = file }) }
    function openMap() {
        openDialog.choose(qsTr("Open a map"), file => {
            mapPage.source = file
            showMap = true
        })
    }
    function savePicture() { saveDialog.choose(qsTr("Save the window as a picture"), "png", writePicture) }
    function saveData() {
        saveDialog.choose(qsTr("Save the sweep as CSV"), "csv", file => measurement.trace.save(file))
    }

    function openRecording(file) {
        measurement.program = ""
        measurement.source = file
    }

    /// Writes what the window shows as PNG.
    function writePicture(file) {
        const path = decodeURIComponent(String(file).replace(/^file:\/\//, ""))
        window.contentItem.parent.grabToImage(result => {
            const success = result.saveToFile(path)
            const text = (success ? qsTr("Picture written: %1") : qsTr("Cannot write %1")).arg(path)
            notices.push(text)
            window.pictureSaved(success ? "" : text)
        })
    }
    signal pictureSaved(string error)

    /// Ends the program with an exit status, and with what went wrong.
    function end(status, error) {
        failure = error
        Qt.exit(status)
    }

    function divide(pixels) { spectrumPage.divide(pixels) }
    function scroll(pages) { spectrumPage.scroll(pages) }
    function scrollToNewest() {
        spectrumPage.waterfall.scroll = 0
        measurement.recording.running = true
    }
    function seek(part) {
        const recording = measurement.recording
        if (recording.duration > 0) {
            recording.position = Math.min(Math.max(recording.position + part * recording.duration, 0), recording.duration)
        }
    }
    function autoLevels() {
        measurement.minLevel = NaN
        measurement.maxLevel = NaN
    }
    // The settings show to what the colours are fitted.
    function autoRange() {
        const waterfall = spectrumPage.waterfall
        waterfall.autoRange()
        measurement.coldest = waterfall.minLevel
        measurement.hottest = waterfall.maxLevel
    }
    function centreMarker() {
        const frequency = measurement.markers.get(measurement.marker).frequency
        const zoom = measurement.zoom
        if (!isNaN(frequency)) {
            zoom.pan(frequency - (zoom.low + zoom.high) / 2)
        }
    }
    function toggleFullScreen() {
        visibility = visibility === Window.FullScreen ? Window.Windowed : Window.FullScreen
    }
    /// Closes what lies above the spectrum, one after the other, and gives it the keys.
    function leave() {
        if (showHelp) {
            showHelp = false
        } else if (showSettings) {
            showSettings = false
        } else if (showMap) {
            showMap = false
        }
        spectrumPage.spectrum.forceActiveFocus()
    }

    Component.onCompleted: {
        measurement.choose("theme", startDark ? "dark" : "light")
        if (commands.units.indexOf(startUnit) >= 0) {
            measurement.choose("levelUnit", startUnit)
        } else {
            end(2, qsTr("There is no unit %1, only %2").arg(startUnit).arg(commands.units.join(", ")))
        }
        startMarkers.slice(0, 6).forEach((frequency, row) => measurement.markers.set(row, frequency))
        showMap = String(mapFile) !== "" && recordingName === ""
        spectrumPage.spectrum.forceActiveFocus()
    }

    Measurement { id: measurement }
    Commands { id: commands; page: window; measurement: measurement }
    ToastModel { id: notices }

    header: ToolStrip { page: window; commands: commands; measurement: measurement }
    footer: StatusLine {
        measurement: measurement
        cursorText: window.showMap ? mapPage.cursorText : spectrumPage.cursorText
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            spacing: 0
            StackLayout {
                currentIndex: window.showMap ? 1 : 0
                SpectrumPage {
                    id: spectrumPage
                    measurement: measurement
                    commands: commands
                }
                MapPage { id: mapPage; commands: commands }
            }
            SettingsPanel {
                id: settingsPanel
                Layout.fillHeight: true
                Layout.preferredWidth: implicitWidth
                visible: window.showSettings
                measurement: measurement
                page: window
                instrumentFile: window.catalogueFile
            }
        }
        Timeline {
            Layout.fillWidth: true
            visible: known && !window.showMap
            recording: measurement.recording
        }
        MarkerTable {
            Layout.fillWidth: true
            visible: window.showTable && !window.showMap
            measurement: measurement
        }
    }

    Notices { notices: notices; anchors { right: parent.right; top: parent.top; margins: 12 } z: 1 }

    HelpPage {
        id: help
        commands: commands
        anchors.centerIn: Overlay.overlay
        width: Math.min(window.width - 24, 1180)
        height: Math.min(window.height - 24, implicitHeight)
        visible: window.showHelp
        onClosed: window.showHelp = false
    }

    DropArea {
        anchors.fill: parent
        onDropped: drop => {
            if (drop.hasUrls) {
                window.openRecording(drop.urls[0])
            }
        }
    }

    Platform.FileDialog {
        id: openDialog
        property var taken
        fileMode: Platform.FileDialog.OpenFile
        function choose(heading, taken) {
            title = heading
            openDialog.taken = taken
            if (window.choosesFiles) {
                open()
            }
        }
        onAccepted: taken(file)
    }
    Platform.FileDialog {
        id: saveDialog
        property var taken
        fileMode: Platform.FileDialog.SaveFile
        function choose(heading, suffix, taken) {
            title = heading
            defaultSuffix = suffix
            nameFilters = ["*." + suffix]
            saveDialog.taken = taken
            if (window.choosesFiles) {
                open()
            }
        }
        onAccepted: taken(file)
    }

    // The picture that the command line asks for: of the whole recording, once all is drawn.
    readonly property bool readAll: measurement.recording.status !== RecordingSource.Loading
        && mapPage.map.status !== RasterMap.Loading && settingsPanel.instrument.status !== Catalogue.Loading
    Timer {
        interval: 500
        running: String(window.pictureFile) !== "" && window.readAll
        onTriggered: window.writePicture(window.pictureFile)
    }
    Connections {
        target: window
        enabled: String(window.pictureFile) !== ""
        function onPictureSaved(error) {
            const failure = error || measurement.recording.errorString || mapPage.map.errorString
                || spectrumPage.spectrum.errorString || settingsPanel.instrument.errorString
            window.end(failure === "" ? 0 : 1, failure)
        }
    }
    Connections {
        target: spectrumPage.spectrum
        function onErrorStringChanged() {
            if (spectrumPage.spectrum.errorString !== "") {
                notices.push(spectrumPage.spectrum.errorString)
            }
        }
    }
    Connections {
        target: measurement.trace
        function onSaved(success) {
            notices.push(success ? qsTr("Data written") : measurement.trace.errorString)
        }
    }
}
