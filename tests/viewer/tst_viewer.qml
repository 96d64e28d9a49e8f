import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import ViewerTest 1.0

// The window of the viewer, driven by keys and the pointer as an operator drives it.
TestCase {
    id: test
    name: "Viewer"
    when: windowShown

    readonly property url band: machine.sample("fm_band.csv")

    Machine { id: machine }

    /// The window, at the size of an instrument's panel; with a recording, once that is read.
    function open(options) {
        const component = Qt.createComponent("qrc:/qml/Main.qml")
        compare(component.errorString(), "")
        const window = createTemporaryObject(component, null,
            Object.assign({ width: 1024, height: 600, choosesFiles: false }, options))
        verify(window)
        window.requestActivate()
        tryCompare(window, "active", true)
        if (options && options.source) {
            tryCompare(window.measurement.recording, "status", RecordingSource.Ready, 20000)
            tryVerify(() => window.measurement.trace.count > 0)
        }
        return window
    }
    function root(window) {
        return window.contentItem.parent
    }
    function find(window, name) {
        const item = findChild(root(window), name)
        verify(item, name)
        return item
    }
    /// The picture of an item; tests read its pixels.
    function grab(item) {
        let image = null
        verify(item.grabToImage(result => { image = result.image }))
        tryVerify(() => image !== null, 10000)
        return image
    }
    /// The height of an item once its layout has come to rest: half a second, for a busy machine draws late.
    function settled(item) {
        let height = -1
        let rests = 0
        tryVerify(() => {
            rests = item.height === height ? rests + 1 : 0
            height = item.height
            return rests >= 10  // tryVerify() asks once more
        })
        return height
    }
    /// The text of a cell of the table of markers.
    function cell(window, marker, column) {
        return findChild(find(window, "marker" + marker), column).text
    }
    function run(window, name) {
        window.commands.of(name).run()
    }

    function test_everyFileLoads_data() {
        return ["ChoiceBox", "ColorBar", "Commands", "FileField", "HelpPage", "LegendItem", "LevelField", "Main", "MapPage",
            "MarkerTable", "Measurement", "Notices", "SettingsPanel", "SpectrumPage", "StatusLine", "Timeline",
            "ToolItem", "ToolStrip", "UnitBox", "Verdict"].map(name => ({ tag: name }))
    }
    function test_everyFileLoads(row) {
        compare(Qt.createComponent("qrc:/qml/" + row.tag + ".qml").errorString(), "")
    }

    // Nothing is wrong without a recording, whatever is pressed.
    function test_startsEmpty() {
        const window = open()
        compare(find(window, "state").text, "no recording: Ctrl+O opens one")
        compare(window.measurement.trace.count, 0)
        window.commands.table.filter(row => !["quit", "fullScreen"].includes(row.name))
            .forEach(row => row.run())
        wait(50)
    }

    function test_tableShowsWhatTheCommandPrints_data() {
        return [
            { tag: "level", unit: "dBm", gain: 0, options: [] },
            { tag: "voltage", unit: "V", gain: 0, options: [] },
            { tag: "field strength", unit: "dBuV/m", gain: 2, options: ["--gain", "2"] }
        ]
    }
    function test_tableShowsWhatTheCommandPrints(row) {
        const frequencies = [92.8, 98.3, 99.71875]
        const window = open({ source: test.band, startMarkers: frequencies, startUnit: row.unit, startGain: row.gain,
            startLimit: -60 })
        const markers = [].concat(...frequencies.map(frequency => ["--marker", frequency + "MHz"]))
        const printed = machine.rfutils(["trace", machine.samplePath("fm_band.csv"), "--more", "--keep", "1000",
            "--limit", "-60", "--unit", row.unit].concat(markers, row.options))
        const [head, ...lines] = printed.trim().split("\n").map(line => line.split(/ {2,}/))
        compare(lines.length, 3)
        lines.forEach((line, i) => {
            ["average", "powerMean", "maximum", "minimum", "above"].forEach(column => {
                const expected = line[head.indexOf(column)].trim()
                verify(expected !== "")
                tryVerify(() => cell(window, i + 1, column) === expected, 3000,
                    column + ": " + cell(window, i + 1, column) + " instead of " + expected)
            })
        })
        compare(cell(window, 1, "delta"), "0.00 dB")
    }

    // A carrier of one sweep stands at the pixels that the axes say; both plots have the same axis.
    function test_carrierStandsWhereTheAxesSay() {
        const window = open({ source: test.band })
        const m = window.measurement
        m.showMaximum = m.showAverage = false
        const spectrum = find(window, "spectrum")
        const waterfall = find(window, "waterfall")
        const levels = Array.from(m.trace.levels(TraceModel.Newest))
        const level = Math.max(...levels)
        const frequency = m.trace.frequencies()[levels.indexOf(level)]
        verify(frequency > 98.2 && frequency < 98.4)
        settled(spectrum)
        m.zoom.show(97.5, 99)
        const x = spectrum.xOf(frequency)
        fuzzyCompare(waterfall.xOf(frequency), x, 0.001)
        compare(waterfall.mapToItem(root(window), 0, 0).x, spectrum.mapToItem(root(window), 0, 0).x)
        fuzzyCompare(spectrum.frequencyAt(x), frequency, 0.001)

        // In the picture of the whole window, so that what is not shown is not found.
        const corner = spectrum.mapToItem(root(window), 0, 0)
        const ratio = machine.sizeOf(grab(root(window))).width / window.width
        const rows = at => machine.rowsOf(grab(root(window)), "#ffd34d", Math.round((corner.x + at) * ratio),
            Math.round(corner.y * ratio), Math.round((corner.y + spectrum.height) * ratio))
            .map(row => row - corner.y * ratio)
        // Once the level axis rests and is drawn.
        tryVerify(() => Math.abs(rows(x)[0] / ratio - spectrum.yOf(level)) <= 2, 3000, "the carrier is drawn at its level")
        const y = spectrum.yOf(level)
        const beside = rows(spectrum.xOf(frequency + 0.2))
        verify(beside.length > 0 && beside[0] / ratio > y + 20, "no carrier beside it")
        m.showNewest = false
        tryVerify(() => rows(x).length === 0, 3000, "the series can be hidden")
    }

    // Levels beyond the range have the ends of the palette; not the same ones under another palette.
    function test_waterfallHasThePalettesColours() {
        const window = open({ source: test.band })
        const m = window.measurement
        m.coldest = -60
        m.hottest = -50
        const waterfall = find(window, "waterfall")
        const colour = frequency => {
            const image = grab(root(window))
            const ratio = machine.sizeOf(image).width / window.width
            const place = waterfall.mapToItem(root(window), waterfall.xOf(frequency), 20)
            return machine.pixel(image, Math.round(place.x * ratio), Math.round(place.y * ratio))
        }
        m.zoom.show(97.5, 99)
        tryVerify(() => colour(98.3125 + 0.02) === "#fde725", 3000, "the carrier has the hottest colour")
        compare(colour(97.7), "#440154")
        m.choose("palette", "grey")
        tryVerify(() => colour(98.3125 + 0.02) === "#ffffff", 3000)
        compare(colour(97.7), "#000000")
    }

    // The settings show to what the colours are fitted; levels that no palette reaches are entered without complaint.
    function test_coloursAreEnteredAndFitted() {
        const window = open({ source: test.band })
        const m = window.measurement
        const waterfall = find(window, "waterfall")
        m.coldest = -2000
        m.hottest = 2000
        compare(waterfall.minLevel, -1000)
        compare(waterfall.maxLevel, 1000)
        window.autoRange()
        verify(waterfall.minLevel > -150 && waterfall.maxLevel < 0, waterfall.minLevel + " to " + waterfall.maxLevel)
        compare(m.coldest, waterfall.minLevel)
        compare(m.hottest, waterfall.maxLevel)
        m.coldest = NaN
        verify(isNaN(waterfall.minLevel))
    }

    function test_keys() {
        const window = open({ source: test.band })
        const m = window.measurement
        const strongest = () => m.markers.get(0).pointFrequency
        keyClick("k")
        const levels = Array.from(m.trace.levels(TraceModel.Newest))
        const top = levels.indexOf(Math.max(...levels))
        compare(m.markers.get(0).point, top)
        keyClick(Qt.Key_Right, Qt.ShiftModifier)
        verify(m.markers.get(0).point > top)
        keyClick(Qt.Key_Left, Qt.ShiftModifier)
        compare(m.markers.get(0).point, top)
        keyClick(Qt.Key_Right, Qt.ControlModifier)
        compare(m.markers.get(0).point, top + 1)
        keyClick("2")
        compare(m.marker, 1)
        compare(m.markers.get(1).point, top)
        compare(cell(window, 2, "delta"), "+" + (levels[top] - levels[top + 1]).toFixed(2) + " dB")
        keyClick(Qt.Key_Delete)
        verify(isNaN(m.markers.get(1).frequency))
        verify(!isNaN(strongest()))
        keyClick(Qt.Key_Delete, Qt.ShiftModifier)
        verify(isNaN(m.markers.get(0).frequency))

        const toggles = [["s", "showNewest"], ["x", "showMaximum"], ["n", "showMinimum"], ["a", "showAverage"], ["f", "showFill"],
            ["p", "paused"]]
        toggles.forEach(([key, property]) => {
            const before = m[property]
            keyClick(key)
            compare(m[property], !before, key)
            keyClick(key)
            compare(m[property], before, key)
        })
        keyClick("u")
        compare(m.unit, "dBV")
        keyClick("u", Qt.ShiftModifier)
        compare(m.unit, "dBm")
        keyClick("w")
        compare(find(window, "waterfall").palette, "magma")
        keyClick("d")
        compare(m.chosen.theme, "light")
        keyClick("d")
        keyClick(Qt.Key_F2)
        verify(window.showSettings)
        keyClick(Qt.Key_F3)
        verify(window.showMap)
        keyClick(Qt.Key_Escape)
        verify(!window.showSettings && window.showMap)
        keyClick(Qt.Key_Escape)
        verify(!window.showMap)
        keyClick("t")
        verify(!window.showTable)

        const spectrum = find(window, "spectrum")
        const height = settled(spectrum)
        keyClick(Qt.Key_Down, Qt.ShiftModifier)
        tryCompare(spectrum, "height", height + 40)
        keyClick(Qt.Key_Up, Qt.ShiftModifier)
        tryCompare(spectrum, "height", height)
        const whole = m.zoom.high - m.zoom.low
        keyClick(Qt.Key_Plus)
        tryVerify(() => m.zoom.high - m.zoom.low < whole)
        const low = m.zoom.low
        keyClick(Qt.Key_Right)
        tryVerify(() => m.zoom.low > low)
        keyClick(Qt.Key_Home)
        compare(m.zoom.high - m.zoom.low, whole)
    }

    function test_helpListsEveryKey() {
        const window = open()
        keyClick(Qt.Key_F1)
        tryCompare(window, "showHelp", true)
        const shown = JSON.stringify(find(window, "help").columns)
        window.commands.table.forEach(row => {
            verify(row.name.startsWith("marker") || shown.includes(JSON.stringify(row.text)), row.name)
            const documented = "| " + row.keys.map(key => "`" + key + "`").join(" ") + " | " + row.text + " |"
            verify(row.name.startsWith("marker") || machine.document("viewer.md").includes(documented), documented)
        })
        keyClick(Qt.Key_F1)
        tryCompare(window, "showHelp", false)
        keyClick("?")
        tryCompare(window, "showHelp", true)
        keyClick(Qt.Key_Escape)
        tryCompare(window, "showHelp", false)
        tryCompare(find(window, "help"), "opened", false)
        keyClick("t")
        verify(!window.showTable)
    }

    // No key does two things.
    function test_keysAreUnique() {
        const window = open()
        const keys = [].concat(...window.commands.table.map(row => row.keys))
        compare(keys.filter((key, i) => keys.indexOf(key) !== i), [])
    }

    function test_pointer() {
        const window = open({ source: test.band })
        const m = window.measurement
        const spectrum = find(window, "spectrum")
        mouseMove(spectrum, spectrum.xOf(95), 60)
        tryVerify(() => find(window, "cursor").text.startsWith("95.0") || find(window, "cursor").text.startsWith("94.9"))
        mouseClick(spectrum, spectrum.xOf(95), 60)
        tryVerify(() => Math.abs(m.markers.get(0).frequency - 95) < 0.05)
        verify(cell(window, 1, "frequency").startsWith("9"))

        const width = m.zoom.high - m.zoom.low
        mouseWheel(spectrum, spectrum.xOf(95), 60, 0, 120)
        tryVerify(() => m.zoom.high - m.zoom.low < width)
        mouseWheel(find(window, "waterfall"), 400, 60, 0, 120)
        const low = m.zoom.low
        mouseDrag(spectrum, 500, 60, -100, 0)
        tryVerify(() => m.zoom.low > low)
        mouseClick(find(window, "whole"))
        tryCompare(m.zoom, "zoomed", false)

        const waterfall = find(window, "waterfall")
        const height = settled(waterfall)
        const handle = waterfall.parent.mapToItem(root(window), waterfall.parent.width / 2, -3)
        mouseDrag(root(window), handle.x, handle.y, 0, 60)
        tryVerify(() => Math.abs(waterfall.height - (height - 60)) <= 12, 3000, "the splitter can be dragged")
    }

    function test_judgesByLimitAndMask() {
        const window = open({ source: test.band, startLimit: -20 })
        const light = find(window, "light")
        tryCompare(light, "visible", true)
        compare(find(window, "verdict").text, "PASS")
        keyClick(Qt.Key_F2)
        const input = find(window, "limitInput")
        compare(input.text, "-20.0 dBm")
        input.forceActiveFocus()
        input.text = "1 mV"
        keyClick(Qt.Key_Return)
        fuzzyCompare(window.measurement.limit, -46.9897, 0.001)
        tryCompare(find(window, "verdict"), "text", "FAIL")
        input.text = ""
        keyClick(Qt.Key_Return)
        verify(isNaN(window.measurement.limit))
        tryCompare(light, "visible", false)
        window.measurement.mask = machine.write("mask.csv", "88,-20\n108,-20\n")
        tryCompare(find(window, "verdict"), "text", "PASS")
        window.measurement.mask = machine.write("low.csv", "88,-90\n108,-90\n")
        tryCompare(find(window, "verdict"), "text", "FAIL")
    }

    function test_holdsStartAgain() {
        const window = open({ source: test.band })
        const trace = window.measurement.trace
        verify(trace.levels(TraceModel.Maximum)[264] > trace.levels(TraceModel.Newest)[264])
        keyClick("c")
        tryVerify(() => !(trace.levels(TraceModel.Maximum)[264] > trace.levels(TraceModel.Newest)[264]))
    }

    function test_savesPictureAndData() {
        const window = open({ source: test.band })
        window.writePicture(machine.url("window é.png"))
        tryVerify(() => machine.sizeOf(machine.url("window é.png")).width >= 1024, 10000)
        const size = machine.sizeOf(machine.url("window é.png"))
        compare(size.height / size.width, 600 / 1024)
        window.measurement.trace.save(machine.url("sweep.csv"))
        tryVerify(() => machine.read("sweep.csv") !== "", 10000)
        const lines = machine.read("sweep.csv").trim().split("\n")
        compare(lines[0], "frequencyMHz,newest,average,maximum,minimum")
        compare(lines.length, window.measurement.trace.points + 1)
    }

    function test_settingsComeFromACatalogue() {
        const window = open({ source: test.band, catalogueFile: machine.sample("catalogue.json") })
        const m = window.measurement
        window.showSettings = true
        const take = (item, row) => {
            const box = findChild(find(window, "settings"), item)
            tryVerify(() => box.count > row)
            box.currentIndex = row
            box.activated(row)
        }
        take("palette", 2)
        compare(m.palette, "cividis")
        take("levelUnit", 4)
        compare(m.unit, "V")
        take("depth", 0)
        compare(m.trace.depth, 200)
        take("theme", 1)
        compare(Qt.colorEqual(window.color, "#eef1f4"), true)
        take("theme", 0)
        take("rowHeight", 2)
        compare(find(window, "waterfall").rowHeight, 4)
        // The first choice offered of each setting of the instrument, unless another is taken.
        tryVerify(() => m.codes.attenuation === 0)
        take("attenuation", 3)
        compare(m.codes.attenuation, 3)
    }

    /// A recorder: sweeps, each a second after the one before, of three levels.
    function sweep(second, level) {
        return "2024-05-04, 21:15:" + String(second).padStart(2, "0") + ", 88000000, 91000000, 1000000, 1, " + level
            + ", -80.00, -90.00, -90.00\n"
    }

    // It writes slowly, stops in the middle of a line for a while, and dies in the middle of another.
    function test_liveRecorder() {
        const script = machine.write("recorder.sh", "#!/bin/sh\n"
            + [0, 1, 2].map(second => "printf '" + sweep(second, "-50.00") + "'; sleep 0.1\n").join("")
            + "printf '" + sweep(3, "-40.00").slice(0, 40) + "'; sleep 0.6; printf '" + sweep(3, "-40.00").slice(40) + "'\n"
            + "printf '" + sweep(4, "-30.00") + sweep(5, "-30.00").slice(0, 50) + "'; kill -9 $$\n")
        const window = open({ program: machine.path("recorder.sh") })
        const m = window.measurement
        tryVerify(() => m.trace.total >= 2, 5000)
        verify(m.recording.status !== RecordingSource.Error)
        tryVerify(() => m.recording.status === RecordingSource.Error || m.recording.status === RecordingSource.Ready, 5000)
        tryCompare(m.trace, "total", 5)
        compare(m.trace.levels(TraceModel.Newest)[0], -30)
        compare(m.trace.levels(TraceModel.Maximum)[1], -80)
        verify(find(window, "state").text !== "")
    }

    // Choices of the instrument become arguments of the recorder, which starts again with another.
    function test_choicesReachTheRecorder() {
        machine.write("echo.sh", "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + machine.path("arguments") + "'\n"
            + "printf '" + sweep(0, "-50.00") + sweep(1, "-50.00") + "'\nexec sleep 5\n")
        const catalogue = machine.write("codes.json", JSON.stringify({ gain: [
            { id: "low", label: "Low", "enum": 7, dispSeq: 1 }, { id: "high", label: "High", "enum": 40, dispSeq: 2 }] }))
        const window = open({ catalogueFile: catalogue, program: machine.path("echo.sh"),
            programArguments: ["-g", "{gain}", "x{gain}y"] })
        tryVerify(() => machine.read("arguments") === "-g\n7\nx7y\n", 5000)
        window.measurement.setCode("gain", 40)
        tryVerify(() => machine.read("arguments") === "-g\n40\nx40y\n", 5000)
    }

    function test_badRecordings_data() {
        return [
            { tag: "missing", source: "missing.csv", says: "No such file" },
            { tag: "no recording", text: "hello\nworld\n", says: "" }
        ]
    }
    function test_badRecordings(row) {
        const source = row.text ? machine.write("bad.csv", row.text) : machine.url(row.source)
        const window = open()
        window.openRecording(source)
        tryCompare(window.measurement.recording, "status", RecordingSource.Error, 5000)
        verify(find(window, "state").text.includes(row.says), find(window, "state").text)
        verify(find(window, "state").text.includes("csv"))
        window.openRecording(test.band)
        tryCompare(window.measurement.recording, "status", RecordingSource.Ready, 5000)
        compare(find(window, "state").text, "fm_band.csv")
    }

    function test_movesWithinTheRecording() {
        const window = open({ source: test.band })
        const m = window.measurement
        compare(m.recording.duration, 2390)
        const newest = () => Array.from(m.trace.levels(TraceModel.Newest)).join()
        const last = newest()
        const timeline = find(window, "timeline")
        verify(timeline.visible)
        keyClick(Qt.Key_PageDown, Qt.ControlModifier)
        tryVerify(() => newest() !== last, 5000)
        tryVerify(() => m.recording.position < 2390 && m.paused, 5000)
        m.choose("rowHeight", "8")
        keyClick(Qt.Key_PageDown)
        verify(find(window, "waterfall").scroll > 0)
        keyClick(Qt.Key_End)
        compare(find(window, "waterfall").scroll, 0)
        tryVerify(() => newest() === last, 5000, "reads on to the end")
    }

    function test_map() {
        const window = open({ mapFile: machine.sample("terrain.asc") })
        verify(window.showMap)
        const page = window.mapPage
        tryCompare(page.map, "status", RasterMap.Ready, 10000)
        const x = find(window, "positionX")
        x.forceActiveFocus()
        const place = page.map.centerOfCell(100, 50)
        x.text = String(place.x)
        keyClick(Qt.Key_Return)
        const y = find(window, "positionY")
        y.forceActiveFocus()
        y.text = String(place.y)
        keyClick(Qt.Key_Return)
        const printed = machine.rfutils(["raster", machine.samplePath("terrain.asc"), "--at", "100,50",
            "--format", "csv"])
        const value = find(window, "positionValue").text
        verify(value !== "" && value !== "no value", value)
        verify(printed.split(/[\s,]+/).includes(value), printed + " holds " + value)
        const view = find(window, "map")
        mouseClick(view, view.width / 2, view.height / 2)
        tryVerify(() => page.markX !== place.x)
    }

    // Whatever is pressed, Qt has nothing to say, and the window stays as it should.
    function test_randomInput() {
        const window = open({ source: test.band, catalogueFile: machine.sample("catalogue.json") })
        const seconds = machine.environment("RFUTILS_LONG_TESTS") === "1" ? 600 : 4
        let state = 1
        const random = end => {
            state = (Math.imul(state, 1664525) + 1013904223) >>> 0
            return Math.floor(state / 4294967296 * end)
        }
        const keys = [Qt.Key_Left, Qt.Key_Right, Qt.Key_Up, Qt.Key_Down, Qt.Key_Home, Qt.Key_End, Qt.Key_PageUp,
            Qt.Key_PageDown, Qt.Key_Plus, Qt.Key_Minus, Qt.Key_Delete, Qt.Key_Escape, Qt.Key_Tab, Qt.Key_Space,
            Qt.Key_Return, Qt.Key_F1, Qt.Key_F2, Qt.Key_F3].concat("psxnafculkvgwrtd123456?0.-".split(""))
        const modifiers = [Qt.NoModifier, Qt.NoModifier, Qt.NoModifier, Qt.ShiftModifier, Qt.ControlModifier]
        const place = () => [random(window.width), random(window.height)]
        const item = root(window)
        const deeds = [
            () => {
                const modifier = modifiers[random(modifiers.length)]
                const key = keys[random(keys.length)]
                // Letters with Ctrl open files, and end the program.
                keyClick(key, typeof key === "string" && modifier === Qt.ControlModifier ? Qt.NoModifier : modifier)
            },
            () => mouseClick(item, ...place()),
            () => mouseDoubleClickSequence(item, ...place()),
            () => mouseMove(item, ...place()),
            () => mouseWheel(item, ...place(), 0, random(2) ? 120 : -120, Qt.NoButton,
                random(3) ? Qt.NoModifier : Qt.ControlModifier),
            () => mouseDrag(item, ...place(), random(300) - 150, random(200) - 100)
        ]
        const end = Date.now() + seconds * 1000
        let events = 0
        while (Date.now() < end) {
            deeds[random(2) ? 0 : random(deeds.length)]()
            if (++events % 20 === 0) {
                wait(0)
                if (!window.visible || window.measurement.trace.count === 0) {
                    window.measurement.recording.restart()
                }
            }
        }
        verify(events > 20)
        const m = window.measurement
        verify(isNaN(m.zoom.low) || (m.zoom.low >= m.zoom.wholeLow && m.zoom.high <= m.zoom.wholeHigh))
    }
}
