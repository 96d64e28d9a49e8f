import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

// The example of a whole instrument, with its sample files.
TestCase {
    id: test
    name: "Instrument"
    when: windowShown
    width: 1024
    height: 600
    visible: true

    ItemPicture { id: picture }

    /// The example, once its files have been read.
    function opened() {
        const component = Qt.createComponent("../../examples/instrument/Instrument.qml")
        compare(component.errorString(), "")
        const panel = createTemporaryObject(component, test)
        const receiver = findChild(panel, "receiver")
        tryCompare(receiver, "status", RecordingSource.Ready, 20000)
        tryCompare(findChild(panel, "sweeps"), "text", "240 of 240 sweeps", 20000) // ready from the first on
        tryCompare(findChild(panel, "detectors"), "count", 7)
        tryCompare(findChild(panel, "setups"), "count", 10)
        tryVerify(() => findChild(panel, "map").map.status === RasterMap.Ready)
        mouseMove(panel, 1, 300)
        return panel
    }
    function show(panel, page) {
        findChild(panel, "pages").currentIndex = page
        waitForRendering(panel)
    }
    function choose(panel, unit) {
        const units = findChild(panel, "units")
        units.currentIndex = units.find(unit)
        compare(units.currentText, unit)
        wait(0) // for the field of the limit, which follows
    }
    function take(item) {
        picture.take(item)
        tryCompare(picture, "width", item.width)
        compare(picture.height, item.height)
    }
    function markerText(panel, row) {
        return findChild(panel, "marker" + row).text
    }
    function enter(panel, text) {
        const field = findChild(panel, "limit")
        field.forceActiveFocus()
        field.selectAll()
        for (const letter of text) {
            keyClick(letter)
        }
    }

    // The strongest points of the last sweep and the peaks beside it.
    function test_showsTheRecording() {
        const panel = opened()
        compare(markerText(panel, 0), "98.312500 MHz -41.4 dBm")
        choose(panel, "dBuV")
        compare(markerText(panel, 0), "98.312500 MHz 65.6 dBuV")
        tryCompare(findChild(panel, "spectrum"), "shownUnit", "dBuV")
        compare(findChild(panel, "waterfall").zoom, findChild(panel, "spectrum").zoom)
        choose(panel, "V")
        compare(markerText(panel, 0), "98.312500 MHz 1.90 mV")
    }

    function test_clicksMoveTheChosenMarker() {
        const panel = opened()
        const spectrum = findChild(panel, "spectrum")
        mouseClick(findChild(panel, "marker3"))
        mouseClick(spectrum, spectrum.xOf(92.8), 100)
        // The nearest point, half a point at most from where the click was.
        const frequency = parseFloat(markerText(panel, 3))
        verify(Math.abs(frequency - 92.8) < 0.1, markerText(panel, 3))
        mouseMove(spectrum, spectrum.xOf(100), 100)
        verify(/^(99\.9|100\.0)\d+ MHz/.test(findChild(panel, "cursor").text), findChild(panel, "cursor").text)
    }

    // The highest level of the recording is -37.7 dBm.
    function test_judgesALimit_data() {
        return [
            { tag: "above", text: "-30", unit: "dBm", verdict: "PASS", range: "{Min: -130.00 dBm, Max: 20.00 dBm}" },
            { tag: "below", text: "-45", unit: "dBm", verdict: "FAIL", range: "{Min: -130.00 dBm, Max: 20.00 dBm}" },
            { tag: "another unit", text: "60", unit: "dBuV", verdict: "FAIL", range: "{Min: -23.0 dBuV, Max: 127.0 dBuV}" },
            { tag: "with its unit", text: "500 mV", unit: "dBuV", verdict: "PASS",
              range: "{Min: -23.0 dBuV, Max: 127.0 dBuV}" },
            { tag: "too high", text: "30", unit: "dBm", verdict: "", range: "30 is above 20.0 dBm" }
        ]
    }
    function test_judgesALimit(row) {
        const panel = opened()
        choose(panel, row.unit)
        enter(panel, row.text)
        tryCompare(findChild(panel, "verdict"), "text", row.verdict)
        compare(findChild(panel, "range").text, row.range)
    }

    function test_aLimitKeepsItsLevel() {
        const panel = opened()
        enter(panel, "-45")
        choose(panel, "dBuV")
        tryCompare(findChild(panel, "limit"), "text", "62.0 dBuV")
        tryCompare(findChild(panel, "verdict"), "text", "FAIL")
    }

    function test_showsPlacesOnTheMap() {
        const panel = opened()
        show(panel, 1)
        const map = findChild(panel, "map")
        const text = findChild(panel, "mapText")
        compare(text.text, "320 x 240 cells, 0 to 832 m")
        const summit = map.pixelOf(443587.5, 5267512.5)
        mouseMove(map, summit.x, summit.y)
        verify(/^47\.5\d{4}°, 8\.2\d{4}°   832 m$/.test(text.text), text.text)
        mouseClick(map, summit.x, summit.y)
        take(map)
        verify(picture.count("#c8283c") > 50, "the marks")
    }

    function test_choosesASetup() {
        const panel = opened()
        show(panel, 2)
        mouseClick(findChild(panel, "setup1"))
        const notices = findChild(panel, "notices")
        compare(notices.count, 2)
        tryVerify(() => notices.currentItem.text === "Setup: Walk test inside a building")
        notices.currentIndex = 0
        tryVerify(() => notices.currentItem.text === "240 sweeps read")
    }

    function test_reportsMissingFiles() {
        const component = Qt.createComponent("../../examples/instrument/Instrument.qml")
        const panel = createTemporaryObject(component, test, { recording: "file:///none.csv", catalogueFile: "file:///none.json" })
        tryCompare(findChild(panel, "receiver"), "status", RecordingSource.Error)
        const notices = findChild(panel, "notices")
        tryCompare(notices, "count", 2)
        const texts = [0, 1].map(i => {
            notices.currentIndex = i
            return notices.currentItem.text
        }).sort()
        verify(texts[0].startsWith("/none.csv: "), texts[0])
        verify(texts[1].startsWith("/none.json: "), texts[1])
    }

    /// Nothing overlaps or is cut on the panel of an instrument.
    function test_fitsThePanel() {
        const panel = opened()
        compare([panel.width, panel.height], [1024, 600])
        take(panel)
        compare(picture.at(2, 300), "#12181f", "the background")
        for (const name of ["spectrum", "waterfall", "limit", "range", "marker5", "notices"]) {
            const item = findChild(panel, name)
            const corner = item.mapToItem(panel, item.width, item.height)
            verify(item.width > 100 && item.height > 10, name)
            verify(corner.x <= 1024 && corner.y <= 600, name)
        }
    }
}
