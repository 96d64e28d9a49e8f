import QtQuick 2.15
import RfUtils 1.0

/// What is measured, and how the operator chose to see it.
Item {
    id: measurement

    readonly property alias trace: trace
    readonly property alias markers: markers
    readonly property alias recording: recording
    readonly property alias zoom: zoom

    property alias source: recording.source
    /// A program that records to its standard output.
    property string program
    /// Its arguments; {item} stands for the code taken of that setting of the instrument.
    property var programArguments: []
    /// The arguments as the program gets them; null while a code is missing.
    readonly property var codedArguments: {
        const items = /\{(\w+)\}/g
        const coded = [].concat(programArguments)
        const known = coded.every(text => (text.match(items) || []).every(item => item.slice(1, -1) in codes))
        return known ? coded.map(text => text.replace(items, (match, item) => codes[item])) : null
    }

    /// The choices of the viewer's settings: ids by the item of the catalogue.
    property var chosen: ({
        levelUnit: "dBm", palette: "viridis", theme: "dark", judged: "1", depth: "1000", speed: "0", rowHeight: "1",
        updateInterval: "33"
    })
    readonly property string unit: chosen.levelUnit
    readonly property string palette: chosen.palette
    readonly property int rowHeight: Number(chosen.rowHeight)

    /// The codes taken of the instrument's settings, by item.
    property var codes: ({})

    /// The antenna's gain in dBi, the limit in dBm (NaN for none), the mask's file.
    property real gain: 0
    property real limit: NaN
    property url mask

    property bool showNewest: true
    property bool showMaximum: true
    property bool showMinimum: false
    property bool showAverage: true
    property bool showFill: false

    /// Levels of both axes in dBm; NaN for automatic ones.
    property real minLevel: NaN
    property real maxLevel: NaN
    property real coldest: NaN
    property real hottest: NaN

    /// The marker that keys and clicks move.
    property int marker: 0

    /// The middle of what is shown, in MHz: where levels that are entered in field units hold.
    readonly property real middle: (zoom.low + zoom.high) / 2
    readonly property bool paused: !recording.running
    readonly property bool fieldUnit: RfUnits.isField(unit)

    /// A frequency, or the number of a point where there are none.
    function frequencyText(frequency) {
        return zoom.hasFrequencies ? RfUnits.frequencyText(frequency)
            : isNaN(frequency) ? "--" : qsTr("point %1").arg(Math.floor(frequency))
    }

    function choose(item, id) {
        const next = Object.assign({}, chosen)
        next[item] = id
        chosen = next
    }

    function setCode(item, code) {
        const next = Object.assign({}, codes)
        next[item] = code
        codes = next
    }

    /// Chooses the one that stands `step` behind the present one.
    function chooseNext(item, ids, step) {
        const count = ids.length
        choose(item, ids[(ids.indexOf(chosen[item]) + step + count) % count])
    }

    /// Places the active marker.
    function placeMarker(frequency) {
        markers.set(marker, frequency)
    }

    /// Moves the active marker by points of the sweep; one that is on no point goes to the highest level.
    function stepMarker(points) {
        const at = markers.get(marker).point
        if (at < 0) {
            markers.toPeak(marker)
            return
        }
        const next = Math.min(Math.max(at + points, 0), trace.points - 1)
        placeMarker(zoom.hasFrequencies ? trace.frequencies()[next] : next)
    }

    /// Makes a marker the active one; one that is not set goes to the highest level.
    function takeMarker(row) {
        marker = row
        if (isNaN(markers.get(row).frequency)) {
            markers.toPeak(row)
        }
    }

    function removeMarkers() {
        for (let row = 0; row < 6; ++row) {
            markers.clear(row)
        }
    }

    Binding { target: Theme; property: "dark"; value: measurement.chosen.theme !== "light" }

    TraceModel {
        id: trace
        depth: Number(measurement.chosen.depth)
        updateInterval: Number(measurement.chosen.updateInterval)
    }
    MarkerModel { id: markers; trace: trace; limit: measurement.limit }
    FrequencyZoom { id: zoom; trace: trace }
    RecordingSource {
        id: recording
        trace: trace
        speed: Number(measurement.chosen.speed)
        program: measurement.codedArguments === null ? "" : measurement.program
        arguments: measurement.codedArguments || []
    }
}
