import QtQml 2.15
import QtQuick 2.15
import RfUtils 1.0

/// All that keys and buttons do: one table for the shortcuts, the buttons and the page of help.
Item {
    id: commands

    required property var page
    required property Measurement measurement

    readonly property var palettes: ["viridis", "magma", "cividis", "turbo", "grey"]
    readonly property var units: [].concat(RfUnits.levelUnits, RfUnits.fieldUnits)

    /// Rows of a group: its name, keys, what a button says, what it does in a line, and the deed.
    readonly property var table: [
        command("open", qsTr("File"), ["Ctrl+O"], qsTr("Open"), qsTr("open a recording"), () => page.open()),
        command("picture", qsTr("File"), ["Ctrl+S"], qsTr("Picture"), qsTr("save the window as a picture"),
                () => page.savePicture()),
        command("data", qsTr("File"), ["Ctrl+E"], qsTr("Data"), qsTr("save the shown sweep as CSV"),
                () => page.saveData()),
        command("openMap", qsTr("File"), ["Ctrl+M"], qsTr("Open map"), qsTr("open a map"), () => page.openMap()),
        command("quit", qsTr("File"), ["Ctrl+Q"], qsTr("Quit"), qsTr("end the program"), () => page.close()),

        command("pause", qsTr("Recording"), ["P"], qsTr("Pause"), qsTr("pause and go on"),
                () => { measurement.recording.running = !measurement.recording.running }),
        command("older", qsTr("Recording"), ["PgDown"], "", qsTr("scroll the waterfall back"),
                () => page.scroll(1)),
        command("newer", qsTr("Recording"), ["PgUp"], "", qsTr("scroll the waterfall forth"),
                () => page.scroll(-1)),
        command("latest", qsTr("Recording"), ["End"], qsTr("Newest"), qsTr("back to the newest sweep"),
                () => page.scrollToNewest()),
        command("earlier", qsTr("Recording"), ["Ctrl+PgDown"], "", qsTr("a twentieth of the recording back"),
                () => page.seek(-0.05)),
        command("later", qsTr("Recording"), ["Ctrl+PgUp"], "", qsTr("a twentieth of the recording forth"),
                () => page.seek(0.05)),
        command("restart", qsTr("Recording"), ["Ctrl+R"], "", qsTr("read the recording from its start"),
                () => measurement.recording.restart()),

        command("newest", qsTr("Traces"), ["S"], qsTr("Sweep"), qsTr("show the newest sweep"),
                () => { measurement.showNewest = !measurement.showNewest }),
        command("maximum", qsTr("Traces"), ["X"], qsTr("Max"), qsTr("show the maximum hold"),
                () => { measurement.showMaximum = !measurement.showMaximum }),
        command("minimum", qsTr("Traces"), ["N"], qsTr("Min"), qsTr("show the minimum hold"),
                () => { measurement.showMinimum = !measurement.showMinimum }),
        command("average", qsTr("Traces"), ["A"], qsTr("Mean"), qsTr("show the average"),
                () => { measurement.showAverage = !measurement.showAverage }),
        command("fill", qsTr("Traces"), ["F"], qsTr("Fill"), qsTr("fill between maximum and minimum"),
                () => { measurement.showFill = !measurement.showFill }),
        command("clearHolds", qsTr("Traces"), ["C"], qsTr("Clear"), qsTr("start maximum and minimum again"),
                () => measurement.trace.clearHolds()),
        command("unit", qsTr("Traces"), ["U"], "", qsTr("next unit"),
                () => measurement.chooseNext("levelUnit", commands.units, 1)),
        command("formerUnit", qsTr("Traces"), ["Shift+U"], "", qsTr("former unit"),
                () => measurement.chooseNext("levelUnit", commands.units, -1)),
        command("levels", qsTr("Traces"), ["L"], qsTr("Auto levels"), qsTr("automatic axis of levels"),
                () => page.autoLevels()),

        command("peak", qsTr("Markers"), ["K"], qsTr("Peak"), qsTr("marker to the highest level"),
                () => measurement.markers.toPeak(measurement.marker)),
        command("peakLeft", qsTr("Markers"), ["Shift+Left"], "◀", qsTr("marker to the next peak below"),
                () => measurement.markers.nextPeak(measurement.marker, -1)),
        command("peakRight", qsTr("Markers"), ["Shift+Right"], "▶", qsTr("marker to the next peak above"),
                () => measurement.markers.nextPeak(measurement.marker, 1)),
        command("pointLeft", qsTr("Markers"), ["Ctrl+Left"], "", qsTr("marker one point down"),
                () => measurement.stepMarker(-1)),
        command("pointRight", qsTr("Markers"), ["Ctrl+Right"], "", qsTr("marker one point up"),
                () => measurement.stepMarker(1)),
        command("trough", qsTr("Markers"), ["V"], "", qsTr("marker to the lowest level"),
                () => measurement.markers.toMinimum(measurement.marker)),
        command("remove", qsTr("Markers"), ["Del"], "", qsTr("remove the marker"),
                () => measurement.markers.clear(measurement.marker)),
        command("removeAll", qsTr("Markers"), ["Shift+Del"], "", qsTr("remove all markers"),
                () => measurement.removeMarkers()),
        command("centre", qsTr("Markers"), ["G"], "", qsTr("bring the marker to the middle"),
                () => page.centreMarker()),

        command("palette", qsTr("Waterfall"), ["W"], qsTr("Colours"), qsTr("next palette"),
                () => measurement.chooseNext("palette", commands.palettes, 1)),
        command("range", qsTr("Waterfall"), ["R"], qsTr("Auto range"), qsTr("fit the colours to what is shown"),
                () => page.autoRange()),

        command("whole", qsTr("View"), ["Home"], qsTr("Whole"), qsTr("show the whole band"),
                () => measurement.zoom.reset()),
        command("settings", qsTr("View"), ["F2"], qsTr("Settings"), qsTr("show the settings"),
                () => { page.showSettings = !page.showSettings }),
        command("map", qsTr("View"), ["F3"], qsTr("Map"), qsTr("show the map"),
                () => { page.showMap = !page.showMap }),
        command("table", qsTr("View"), ["T"], qsTr("Table"), qsTr("show the table of markers"),
                () => { page.showTable = !page.showTable }),
        command("theme", qsTr("View"), ["D"], qsTr("Theme"), qsTr("light or dark"),
                () => measurement.chooseNext("theme", ["dark", "light"], 1)),
        command("larger", qsTr("View"), ["Shift+Down"], "", qsTr("more room for the spectrum"),
                () => page.divide(40)),
        command("smaller", qsTr("View"), ["Shift+Up"], "", qsTr("more room for the waterfall"),
                () => page.divide(-40)),
        command("fullScreen", qsTr("View"), ["F11"], "", qsTr("fill the screen"), () => page.toggleFullScreen()),
        command("help", qsTr("View"), ["F1", "?"], "?", qsTr("show this help"),
                () => { page.showHelp = !page.showHelp }),
        command("leave", qsTr("View"), ["Esc"], "", qsTr("close what is open, back to the spectrum"),
                () => page.leave())
    ].concat([0, 1, 2, 3, 4, 5].map(row => command(
        "marker" + (row + 1), qsTr("Markers"), [String(row + 1)], "", qsTr("take marker %1").arg(row + 1),
        () => measurement.takeMarker(row))))

    function command(name, group, keys, title, text, run) {
        return { name: name, group: group, keys: keys, title: title, text: text, run: run }
    }

    /// The row of that name.
    function of(name) {
        return table.find(row => row.name === name)
    }

    Instantiator {
        model: commands.table.length
        Shortcut {
            required property int index
            sequences: commands.table[index].keys
            onActivated: commands.table[index].run()
        }
    }
}
