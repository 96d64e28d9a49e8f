import QtQml 2.15
import QtQuick 2.15
import QtQuick.Window 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "TraceView"
    when: windowShown
    width: 400
    height: 300
    visible: true

    // Behind all views, to be seen through what is transparent.
    readonly property string none: "#00ff00"
    readonly property string ink: "#0000ff"
    readonly property string high: "#ff0000"
    readonly property string low: "#ffff00"
    readonly property string mean: "#ff00ff"
    readonly property string area: "#00ffff"
    readonly property string edge: "#804000"

    // 120 points of 0.1 MHz, each 2 pixels wide, and 80 dB of 2 pixels each, from x = 50 and y = 10 on.
    Component { id: sweeps; TraceModel { startFrequency: 100; stopFrequency: 112; updateInterval: 0 } }
    Component {
        id: page
        Rectangle {
            property TraceModel trace
            property TraceView view: view
            color: test.none
            width: 300
            height: 200
            TraceView {
                id: view
                trace: parent.trace
                anchors.fill: parent
                leftMargin: 50
                rightMargin: 10
                topMargin: 10
                bottomMargin: 30
                minLevel: -100
                maxLevel: -20
                gridColor: test.none
                font: Qt.font({ family: "DejaVu Sans", pixelSize: 16 })
                newestColor: test.ink
                maximumColor: test.high
                minimumColor: test.low
                averageColor: test.mean
                fillColor: test.area
                limitColor: test.edge
            }
        }
    }
    Component { id: markerModels; MarkerModel {} }
    Component { id: spies; SignalSpy {} }
    TestFolder { id: folder }
    ItemPicture { id: picture }
    readonly property real ratio: Screen["devicePixelRatio"]  // which qmllint does not know

    function init() {
        mouseMove(test, 399, 299)
    }

    /// Noise at -90 dBm, and other levels by the numbers of their points.
    function sweep(others) {
        const levels = Array(120).fill(-90)
        for (const point in others || {}) {
            levels[point] = others[point]
        }
        return levels
    }
    function made(levels, properties) {
        const p = createTemporaryObject(page, test, { trace: createTemporaryObject(sweeps, test) })
        for (const name in properties || {}) {
            p.view[name] = properties[name]
        }
        if (levels) {
            verify(p.trace.append(levels))
        }
        return p
    }
    /// Takes the pixels that an item draws.
    function grab(item) {
        picture.take(item, ratio)
        tryVerify(() => picture.width > 0)
        compare([picture.width, picture.height], [item.width * ratio, item.height * ratio])
    }
    /// The colour of a pixel, if all its device pixels have the same.
    function at(x, y) {
        const colors = new Set()
        for (let i = 0; i < ratio * ratio; ++i) {
            colors.add(picture.at(x * ratio + i % ratio, y * ratio + Math.floor(i / ratio)))
        }
        return [...colors].join(" ")
    }
    /// The rows of the plot in which a column has a colour: [first, last], or none.
    function rows(x, color) {
        const found = []
        for (let y = 10; y < 170; ++y) {
            for (let i = 0; i < ratio * ratio; ++i) {
                if (picture.at(x * ratio + i % ratio, y * ratio + Math.floor(i / ratio)) === color) {
                    found.push(y)
                    break
                }
            }
        }
        return found.length ? [found[0], found[found.length - 1]] : []
    }
    /// Whether rows() has these first and last rows, but for one pixel.
    function isNear(actual, first, last) {
        return actual.length === 2 && Math.abs(actual[0] - first) <= 1 && Math.abs(actual[1] - last) <= 1
    }
    /// A carrier 20 dB below the upper edge at x = 170, from where the line goes half way down within its column.
    function showsCarrier(bottom) {
        return isNear(rows(170, ink), 50, bottom || 100) && isNear(rows(164, ink), 150, 150) && isNear(rows(176, ink), 150, 150)
    }

    function test_drawsACarrierWhereTheAxisSays() {
        const p = made(sweep({ 60: -40 }))
        grab(p)
        compare(p.view.xOf(106), 170)
        compare(p.view.yOf(-40), 50)
        verify(showsCarrier(), JSON.stringify([164, 170, 176].map(x => rows(x, ink))))
        // Empty at the level of the carrier, but for its own column and the slopes.
        for (let x = 51; x < 290; ++x) {
            verify(Math.abs(x - 170) <= 1 || !at(x, 50).includes(ink), x)
        }
        p.view.visible = false
        grab(p)
        verify(!showsCarrier())
        compare(rows(170, ink), [])
        p.view.visible = true
        p.view.showNewest = false
        grab(p)
        verify(!showsCarrier())
    }

    function test_showsAPeakOfOnePointAmongMany() {
        const levels = Array(16384).fill(-90)
        levels[8192] = -40
        const p = made(levels)
        grab(p)
        verify(showsCarrier(150), JSON.stringify([164, 170, 176].map(x => rows(x, ink))))
    }

    function test_followsZoomAndLevels() {
        const p = made(sweep({ 60: -40 }))
        p.view.zoom.show(105, 107)
        p.view.maxLevel = -60
        grab(p)
        compare(p.view.xOf(106), 170)
        // Above the plot; 12 pixels for a point, 4 for a dB, so that the slope leaves the plot at x = 165.2
        compare(rows(170, ink), [])
        compare(rows(165, ink)[0], 10)
        verify(isNear(rows(150, ink), 129, 131))
        p.view.maxLevel = -20
        p.view.zoom.show(100, 106)
        grab(p)
        verify(isNear(rows(289, ink), 50, 75), JSON.stringify(rows(289, ink)))
    }

    function test_gapsAreNotBridged() {
        const p = made(sweep({ 58: NaN, 59: NaN, 60: -999, 61: -Infinity, 62: NaN }))
        grab(p)
        for (let x = 166; x < 175; ++x) {
            compare(rows(x, ink), [])
        }
        verify(isNear(rows(160, ink), 150, 150))
        verify(isNear(rows(180, ink), 150, 150))
        p.trace.append(Array(120).fill(NaN))
        grab(p)
        compare(rows(160, ink), [])
    }

    function test_holdsAverageAndFill() {
        const p = made(sweep({ 60: -40 }), { showNewest: false })
        p.trace.append(sweep({ 60: -80 }))
        p.view.showFill = true
        grab(p)
        verify(isNear(rows(170, area), 50, 140))
        verify(isNear(rows(100, area), 150, 150))
        p.view.showFill = false
        p.view.showMaximum = true
        p.view.showMinimum = true
        p.view.showAverage = true
        grab(p)
        verify(Math.abs(rows(170, high)[0] - 50) <= 1)
        // From the noise to -80 dBm at 2 pixels for a dB
        verify(Math.abs(rows(170, low)[0] - 130) <= 1)
        verify(Math.abs(rows(170, mean)[0] - 90) <= 1)
        p.trace.clearHolds()
        p.trace.append(sweep())
        tryVerify(() => { grab(p); return rows(170, high).length === 0 || rows(170, high)[0] >= 149 })
    }

    function test_levelsOfPlaces() {
        const p = made(sweep())
        grab(p)
        compare(p.view.levelAt(10), -20)
        compare(p.view.levelAt(90), -60)
        compare(p.view.levelAt(170), -100)
        compare(p.view.levelAt(9), NaN)
        compare(p.view.levelAt(171), NaN)
        compare(p.view.yOf(-60), 90)
        compare(p.view.yOf(0), -30)
        p.view.topMargin = 180
        compare(p.view.yOf(-60), NaN)
        compare(p.view.levelAt(185), NaN)
    }

    function test_automaticLevels() {
        const p = made(sweep({ 60: -43 }), { minLevel: NaN, maxLevel: NaN })
        const spy = createTemporaryObject(spies, test, { target: p.view, signalName: "shownLevelsChanged" })
        tryCompare(p.view, "shownMaxLevel", -40)
        compare(p.view.shownMinLevel, -100)
        compare(spy.count, 1)
        // A little more or less changes nothing.
        p.trace.append(sweep({ 60: -41, 3: -98 }))
        p.trace.append(sweep({ 60: -55, 3: -81 }))
        wait(50)
        compare(spy.count, 1)
        p.trace.append(sweep({ 60: -39 }))
        tryCompare(p.view, "shownMaxLevel", -30)
        p.trace.append(sweep({ 60: -65 }))
        tryCompare(p.view, "shownMaxLevel", -60)
        p.view.maxLevel = 0
        tryCompare(p.view, "shownMaxLevel", 0)
        compare(p.view.shownMinLevel, -100)
        p.view.maxLevel = NaN
        p.trace.clear()
        p.trace.append(Array(120).fill(-20))
        tryCompare(p.view, "shownMinLevel", -30)
        compare(p.view.shownMaxLevel, -10)
    }

    function test_automaticLevelsAreRoundInTheUnit() {
        // 0 dBm are 106.9897 dBuV: from 10 to 70 dBuV
        const p = made(sweep({ 60: -43 }), { minLevel: NaN, maxLevel: NaN, unit: "dBuV" })
        tryCompare(p.view, "shownUnit", "dBuV")
        fuzzyCompare(p.view.shownMinLevel, 10 - 106.9897, 1e-9)
        fuzzyCompare(p.view.shownMaxLevel, 70 - 106.9897, 1e-9)
    }

    function test_oddLevelsOfTheAxis_data() {
        return [
            { tag: "the same", min: -60, max: -60, low: -60, high: -59 },
            { tag: "the wrong way round", min: -20, max: -60, low: -20, high: -19 },
            { tag: "far away", min: -1e300, max: Infinity, low: -1000, high: 1000 }
        ]
    }
    function test_oddLevelsOfTheAxis(row) {
        const p = made(sweep(), { minLevel: row.min, maxLevel: row.max })
        for (const unit of ["dBm", "V", "W", "dBuV/m", "V/m"]) {
            p.view.unit = unit
            grab(p)
            compare(p.view.shownUnit, unit)
            compare([p.view.shownMinLevel, p.view.shownMaxLevel], [row.low, row.high])
        }
    }

    function test_unitsMoveNothingButFields_data() {
        return [{ tag: "dBuV" }, { tag: "V" }, { tag: "W" }]
    }
    function test_unitsMoveNothingButFields(row) {
        const p = made(sweep({ 60: -40 }))
        p.view.unit = row.tag
        tryCompare(p.view, "shownUnit", row.tag)
        grab(p)
        verify(showsCarrier())
    }

    function test_fieldsTakeTheFrequencyOfEachPoint() {
        // The field of the same level grows by 20 lg(f): from 10 MHz to 100 MHz by 20 dB.
        const p = made()
        p.trace.startFrequency = 10
        p.trace.stopFrequency = 100
        p.trace.append(Array(90).fill(-60))
        p.view.unit = "dBuV/m"
        tryCompare(p.view, "shownUnit", "dBuV/m")
        grab(p)
        verify(isNear(rows(51, ink), 10 + 2 * (40 + 20) - 2, 10 + 2 * (40 + 20)), JSON.stringify(rows(51, ink)))
        verify(isNear(rows(287, ink), 90, 90))
        fuzzyCompare(p.view.yOf(-60, 10), 130, 1e-6)
        fuzzyCompare(p.view.yOf(-60, 100), 90, 1e-6)
        compare(p.view.yOf(-60), 90)
        fuzzyCompare(p.view.levelAt(130, 10), -60, 1e-6)
        // The gain moves all alike, and the axis with them.
        p.view.gain = 10
        wait(50)
        compare(p.view.yOf(-60), 90)
    }

    function test_unitsThatAreNotThere_data() {
        return [
            { tag: "unknown", unit: "furlong" },
            { tag: "empty", unit: "" },
            { tag: "a prefixed one", unit: "mV" },
            { tag: "a field without frequencies", unit: "V/m", counted: true },
            { tag: "a field with an infinite gain", unit: "V/m", gain: Infinity }
        ]
    }
    function test_unitsThatAreNotThere(row) {
        const p = made()
        if (row.counted) {
            p.trace.startFrequency = NaN
        }
        p.trace.append(sweep({ 60: -40 }))
        p.view.gain = row.gain || 0
        p.view.unit = row.unit
        grab(p)
        compare(p.view.shownUnit, "dBm")
        compare(p.view.unit, row.unit)
        verify(showsCarrier())
    }

    function test_limit() {
        const p = made(sweep({ 60: -40, 80: -49 }))
        grab(p)
        compare(p.view.verdict, TraceView.None)
        p.view.limit = -50
        tryCompare(p.view, "verdict", TraceView.Fail)
        compare(p.view.violations.length, 2)
        compare(p.view.violations[0], { from: 106, to: 106, frequency: 106, level: -40, limit: -50, margin: -10, upper: true })
        compare(p.view.violations[1].margin, -1)
        grab(p)
        verify(isNear(rows(100, edge), 70, 70))
        const verdicts = createTemporaryObject(spies, test, { target: p.view, signalName: "verdictChanged" })
        const counts = createTemporaryObject(spies, test, { target: p.view, signalName: "violationsChanged" })
        p.view.limit = -40
        tryCompare(p.view, "verdict", TraceView.Pass)
        compare(p.view.violations, [])
        compare(verdicts.count, 1)
        compare(counts.count, 1)
        // The hold is judged unless it is to be another.
        p.trace.append(sweep({ 60: -30 }))
        tryCompare(p.view, "verdict", TraceView.Fail)
        compare(p.view.violations[0].margin, -10)
        compare(counts.count, 2)
        // As many as before, farther beyond.
        p.trace.append(sweep({ 60: -28 }))
        tryCompare(counts, "count", 3)
        compare(p.view.violations.length, 1)
        compare(p.view.violations[0].margin, -12)
        p.trace.append(sweep())
        wait(50)
        compare(p.view.verdict, TraceView.Fail)
        p.view.judged = TraceModel.Newest
        tryCompare(p.view, "verdict", TraceView.Pass)
        p.view.limit = NaN
        tryCompare(p.view, "verdict", TraceView.None)
        grab(p)
        compare(rows(100, edge), [])
    }

    function test_mask_data() {
        return [
            { tag: "kept", mask: "100,-30,\n112,-30,\n", verdict: TraceView.Pass, violations: 0 },
            { tag: "too high", mask: "100,-45,\n112,-45,\n", verdict: TraceView.Fail, violations: 1 },
            { tag: "too low", mask: "100,,-80\n112,,-80\n", verdict: TraceView.Fail, violations: 1 },
            { tag: "in dBuV", unit: "dBuV", mask: "100,60,\n112,60,\n", verdict: TraceView.Fail, violations: 1 },
            { tag: "in volts", unit: "V", mask: "100,0.1,\n112,0.1,\n", verdict: TraceView.Pass, violations: 0 },
            { tag: "a field", unit: "dBuV/m", mask: "100,77.5,\n112,77.5,\n", verdict: TraceView.Fail, violations: 1 },
            { tag: "a field that is kept", unit: "dBuV/m", mask: "100,77.8,\n112,77.8,\n", verdict: TraceView.Pass, violations: 0 },
            { tag: "elsewhere", mask: "10,-45,\n20,-45,\n", verdict: TraceView.None, violations: 0 }
        ]
    }
    function test_mask(row) {
        // -40 dBm at 106 MHz are 66.9897 dBuV, 2.24 mV and 67 + 40.506 - 29.8 = 77.706 dBuV/m.
        const p = made(sweep({ 60: -40 }))
        compare(p.view.status, TraceView.Null)
        p.view.maskUnit = row.unit || "dBm"
        p.view.mask = folder.write("mask.csv", row.mask)
        compare(p.view.status, TraceView.Loading)
        tryCompare(p.view, "status", TraceView.Ready)
        tryCompare(p.view, "verdict", row.verdict)
        compare(p.view.violations.length, row.violations)
        compare(p.view.errorString, "")
        // The unit of the axis changes nothing of that.
        p.view.unit = "V/m"
        tryCompare(p.view, "shownUnit", "V/m")
        compare(p.view.verdict, row.verdict)
        p.view.mask = ""
        tryCompare(p.view, "verdict", TraceView.None)
        compare(p.view.status, TraceView.Null)
    }

    function test_drawsTheMask() {
        const p = made(sweep())
        p.view.mask = folder.write("step.csv", "102,-40,-95\n104,-40,-95\n106,-40,\n106,-60,\n110,-60,\n")
        tryCompare(p.view, "status", TraceView.Ready)
        grab(p)
        compare(rows(80, edge), [])
        verify(isNear(rows(95, edge), 50, 160))
        verify(isNear(rows(175, edge), 90, 90))
        // The step joins the middles of its two columns.
        verify(isNear(rows(169, edge), 50, 70))
        verify(isNear(rows(170, edge), 70, 90))
        compare(rows(260, edge), [])
    }

    function test_reportsMasksThatCannotBeRead_data() {
        return [
            { tag: "missing", error: ": No such file or directory" },
            { tag: "no numbers", text: "a,b,c\nd,e,f\n" },
            { tag: "unknown unit", text: "100,-30,\n", unit: "furlong" },
            { tag: "no level", text: "100,0,\n112,1,\n", unit: "V" }
        ]
    }
    function test_reportsMasksThatCannotBeRead(row) {
        const p = made(sweep())
        const name = "bad " + row.tag + ".csv"
        if (row.text) {
            folder.write(name, row.text)
        }
        p.view.maskUnit = row.unit || "dBm"
        p.view.mask = folder.url(name)
        tryCompare(p.view, "status", TraceView.Error)
        verify(p.view.errorString !== "")
        if (row.error) {
            compare(p.view.errorString, folder.path(name) + row.error)
        }
        compare(p.view.verdict, TraceView.None)
    }

    function test_cursorLevel() {
        const p = made(sweep({ 60: -40, 61: NaN }))
        const spy = createTemporaryObject(spies, test, { target: p.view, signalName: "cursorLevelChanged" })
        wait(50)
        compare(p.view.cursorLevel, NaN)
        mouseMove(p.view, 170, 100)
        tryCompare(p.view, "cursorLevel", -40)
        compare(spy.count, 1)
        mouseMove(p.view, 100, 100)
        tryCompare(p.view, "cursorLevel", -90)
        p.view.cursorFrequency = 106.1
        tryCompare(p.view, "cursorLevel", NaN)
        p.view.zoom.show(105, 107)
        // Between points: the nearest
        p.view.cursorFrequency = 106.02
        tryCompare(p.view, "cursorLevel", -40)
        p.view.cursorFrequency = 105.94
        tryCompare(p.view, "cursorLevel", -90)
        p.view.cursorFrequency = 111
        tryCompare(p.view, "cursorLevel", NaN)
    }

    function test_cursorLevelIsTheHighestOfItsPixel() {
        const levels = Array(16384).fill(-90)
        levels[8195] = -40
        const p = made(levels)
        wait(50)
        p.view.cursorFrequency = 106.0001
        tryCompare(p.view, "cursorLevel", -40)
        p.view.cursorFrequency = 106.5
        tryCompare(p.view, "cursorLevel", -90)
    }

    function test_drawsCursorAndMarkers() {
        const p = made(sweep({ 60: -40 }), { cursorColor: test.high, markerColor: test.mean })
        const markers = createTemporaryObject(markerModels, test, { trace: p.trace })
        p.view.markers = markers
        p.view.cursorFrequency = 102
        markers.set(0, 104.03)
        markers.set(3, 109)
        tryVerify(() => markers.get(3).valid)
        grab(p)
        compare(rows(90, high), [10, 169])
        // On its point, at 104 MHz
        verify(rows(130, mean).length === 2 && rows(130, mean)[1] === 169)
        compare(at(132, 90), none)
        verify(rows(230, mean)[1] === 169)
        compare(picture.at(250 * ratio, 100 * ratio), test.none)
        mousePress(p.view, 230, 100)
        mouseMove(p.view, 240, 100)
        mouseMove(p.view, 250, 100)
        mouseRelease(p.view, 250, 100)
        compare(markers.get(3).frequency, 110)
        compare(p.view.zoom.zoomed, false)
        markers.destroy()
        wait(0)
        compare(p.view.markers, null)
        grab(p)
        compare(rows(130, mean), [])
    }

    function test_labels() {
        const p = made(sweep(), { gridColor: "#c0c0c0", textColor: "#000000" })
        const ofLabels = () => {
            let count = 0
            for (let y = 0; y < 200 * ratio; ++y) {
                for (let x = 0; x < 45 * ratio; ++x) {
                    count += picture.at(x, y) !== test.none ? 1 : 0
                }
            }
            return count
        }
        grab(p)
        verify(ofLabels() > 50)
        // Lines of the grid at -60 dBm and 105 MHz
        verify(at(60, 90).includes("#c0c0c0"))
        verify(at(150, 60).includes("#c0c0c0"))
        compare(at(60, 93), test.none)
        p.view.backgroundColor = "#102030"
        grab(p)
        compare(at(60, 93), "#102030")
        compare(at(299, 199), "#102030")
    }

    function test_longLabels() {
        const p = made(sweep(), { textColor: "#000000", unit: "W/cm^2", leftMargin: 100 })
        grab(p)
        const inked = x => Array.from({ length: 200 * ratio }, (_, y) => picture.at(x, y)).some(c => c !== test.none)
        verify(inked(60 * ratio))
        verify(!inked(0), "a label is cut by the edge")
    }

    function test_withoutRoom() {
        const p = made(sweep())
        for (const size of [[0, 0], [40, 200], [300, 20], [60, 41]]) {
            p.width = size[0]
            p.height = size[1]
            wait(20)
        }
        p.width = 300
        p.height = 200
        p.trace.append(sweep({ 60: -40 }))
        grab(p)
        verify(showsCarrier())
    }

    function test_anotherTrace() {
        const p = made(sweep({ 60: -40 }))
        grab(p)
        verify(showsCarrier())
        const other = createTemporaryObject(sweeps, test, { stopFrequency: 124 })
        other.append(sweep({ 60: -40 }))
        p.view.trace = other
        grab(p)
        compare(p.view.xOf(112), 170)
        verify(showsCarrier())
        p.view.trace = null
        grab(p)
        compare(rows(170, ink), [])
        compare(p.view.cursorLevel, NaN)
    }
}
