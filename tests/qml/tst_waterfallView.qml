import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "WaterfallView"
    when: windowShown
    width: 400
    height: 500
    visible: true

    // Behind all views, to be seen through what is transparent.
    readonly property string none: "#00ff00"
    // The ends of the published palettes.
    readonly property string lowest: "#440154"
    readonly property string highest: "#fde725"

    // Eight points of 1 MHz, each 10 pixels wide from x = 40 on; twenty rows, 2 pixels high, from y = 10 on.
    Component { id: sweeps; TraceModel { startFrequency: 100; stopFrequency: 108; updateInterval: 0 } }
    Component {
        id: page
        Rectangle {
            property TraceModel trace
            property WaterfallView view: view
            property SignalSpy scrolls: SignalSpy { target: view; signalName: "scrollChanged" }
            property SignalSpy pauses: SignalSpy { target: view; signalName: "pausedChanged" }
            property SignalSpy levels: SignalSpy { target: view; signalName: "cursorLevelChanged" }
            color: test.none
            width: 130
            height: 60
            WaterfallView {
                id: view
                trace: parent.trace
                anchors.fill: parent
                leftMargin: 40
                rightMargin: 10
                topMargin: 10
                bottomMargin: 10
                rowHeight: 2
                minLevel: -100
                maxLevel: -20
            }
        }
    }
    Component { id: lone; WaterfallView { width: 200; height: 100 } }
    ItemPicture { id: pixels }
    SignalSpy { id: taken; target: pixels; signalName: "taken" }
    property real ratio: 1  // device pixels of a pixel
    Component { id: spies; SignalSpy {} }

    function init() {
        mouseMove(test, 390, 490)  // away from the views
    }
    function row(level) {
        return Array(8).fill(level)
    }
    /// Rows of one level each, the last one on top.
    function append(p, levels) {
        for (const level of levels) {
            verify(p.trace.append(Array.isArray(level) ? level : row(level)))
        }
    }
    function made(properties) {
        return createTemporaryObject(page, test, Object.assign({ trace: createTemporaryObject(sweeps, test) }, properties))
    }
    /// Takes the pixels that an item draws.
    function grab(item) {
        taken.clear()
        pixels.take(item)
        taken.wait()
        ratio = pixels.width / item.width
        verify(ratio === 1 || ratio === 2)
        compare(pixels.height, item.height * ratio)
    }
    /// The colours of a column from one row to before another, without repetitions of the one before.
    function down(x, from, to) {
        return Array.from({ length: to - from }, (_, i) => pixels.at(x, from + i))
            .filter((color, i, all) => i === 0 || color !== all[i - 1])
    }
    /// The colour in the middle of a point's cell, in a row from the top on.
    function cell(row, point) {
        return pixels.at((40 + 10 * point + 5) * ratio, (10 + 2 * row + 1) * ratio)
    }
    /// The colours of a point in the rows from the top on, as many as wanted.
    function cells(p, count, point) {
        grab(p)
        return Array.from({ length: count }, (_, row) => cell(row, point || 0))
    }

    function test_coloursOfLevels_data() {
        // By definition: the lowest and the highest entry, and the entries for round(i * 255 / 16) of viridis, where
        // 16 steps of 5 dB divide the range, and the middle of an entry is 0.15625 dB above its beginning.
        return [
            { tag: "the lowest", level: -100, color: "#440154" },
            { tag: "below it", level: -300, color: "#440154" },
            { tag: "the highest", level: -20, color: "#fde725" },
            { tag: "above it", level: 30, color: "#fde725" },
            { tag: "entry 16", level: -100 + 16 * 0.3125 + 0.15625, color: "#48186a" },
            { tag: "entry 64", level: -100 + 64 * 0.3125 + 0.15625, color: "#3b528b" },
            { tag: "entry 191", level: -100 + 191 * 0.3125 + 0.15625, color: "#5cc863" },
            { tag: "not measured", level: NaN, color: test.none },
            { tag: "-999", level: -999, color: test.none },
            { tag: "minus infinity", level: -Infinity, color: test.none }
        ]
    }
    function test_coloursOfLevels(data) {
        const p = made()
        const levels = row(-60)
        levels[3] = data.level
        append(p, [levels])
        grab(p)
        compare(cell(0, 3), data.color)
        for (const edge of [70, 79]) {
            compare(pixels.at(edge * ratio, 10 * ratio), data.color)
        }
        verify(cell(0, 2) !== data.color)
        compare(cell(1, 3), test.none)
        compare(pixels.at(39 * ratio, 11 * ratio), test.none)
        compare(pixels.at(120 * ratio, 11 * ratio), test.none)
    }

    function test_newRowsComeOnTop() {
        const p = made()
        compare(cells(p, 2), [none, none])
        append(p, [-20])
        compare(cells(p, 3), [highest, none, none])
        append(p, [-100])
        compare(cells(p, 3), [lowest, highest, none])
        append(p, [-100, -20, -100])
        compare(cells(p, 6), [lowest, highest, lowest, lowest, highest, none])
        grab(p)
        // Each two pixels high.
        compare(pixels.at(50 * ratio, 10 * ratio), lowest)
        compare(pixels.at(50 * ratio, 12 * ratio - 1), lowest)
        compare(pixels.at(50 * ratio, 12 * ratio), highest)
        compare(pixels.at(50 * ratio, 9 * ratio), none)
    }

    function test_everyRowIsInItsPlace() {
        // Through several strips of 64 rows: one row in seven is strong.
        const p = made()
        for (let rows = 1; rows <= 200; ++rows) {
            append(p, [rows % 7 === 0 ? -20 : -100])
            if (rows % 13 === 0 || rows % 64 < 2) {
                const expected = Array.from({ length: 20 }, (_, i) => rows - i < 1 ? none : (rows - i) % 7 === 0 ? highest : lowest)
                compare(cells(p, 20), expected)
                compare(pixels.at(50 * ratio, 50 * ratio), none)
            }
        }
    }

    function test_noSeams_data() {
        return [333, 397, 400].map(height => ({ tag: String(height), height: height }))
    }
    function test_noSeams(data) {
        const p = made({ height: data.height })
        p.view.rowHeight = 1
        const rows = data.height - 20
        append(p, Array(rows + 37).fill(-20))
        grab(p)
        compare(down(50 * ratio, 0, data.height * ratio), [none, highest, none])
        for (const edge of [10, data.height - 11]) {
            compare(pixels.at(50 * ratio, edge * ratio), highest)
        }
        append(p, Array(rows).fill(0).map((_, i) => i % 2 ? -20 : -100))
        grab(p)
        compare(down(50 * ratio, 10 * ratio, (data.height - 10) * ratio).length, rows)
    }

    function test_theLowestRowMayBeCut() {
        const p = made()
        p.view.rowHeight = 16
        append(p, [-20, -100, -20])
        grab(p)
        compare(down(50 * ratio, 0, 60 * ratio), [none, highest, lowest, highest, none])
        compare(pixels.at(50 * ratio, 50 * ratio - 1), highest)
        compare(pixels.at(50 * ratio, 50 * ratio), none)
        compare(p.view.rowAt(49), 2)
        compare(p.view.rowAt(50), -1)
    }

    function test_palettes_data() {
        return [
            { tag: "viridis", lowest: "#440154", highest: "#fde725" },
            { tag: "magma", lowest: "#000004", highest: "#fcfdbf" },
            { tag: "cividis", lowest: "#00224e", highest: "#fee838" },
            { tag: "grey", lowest: "#000000", highest: "#ffffff" },
            { tag: "turbo", lowest: "#30123b", highest: "#7a0403" },
            { tag: "Viridis", lowest: "#440154", highest: "#fde725" }
        ]
    }
    function test_palettes(data) {
        const p = made()
        append(p, Array(70).fill(-100).concat([-20, NaN]))
        compare(cells(p, 3), [none, highest, lowest])
        p.view.palette = data.tag
        compare(p.view.palette, data.tag)
        compare(cells(p, 20), [none, data.highest].concat(Array(18).fill(data.lowest)))
        compare(String(p.view.levelColor(-100)), data.lowest)
        compare(String(p.view.levelColor(-20)), data.highest)
        compare(p.view.levelColor(NaN).a, 0)
    }
    function test_paletteNames() {
        compare(lone.createObject(test).palettes, ["viridis", "magma", "cividis", "grey", "turbo"])
    }

    function test_rangeMayChangeAfterwards() {
        const p = made()
        append(p, [-60, -50])
        p.view.maxLevel = -60
        compare(cells(p, 2), [highest, highest])
        p.view.minLevel = -50
        p.view.maxLevel = -40
        compare(cells(p, 2), [lowest, lowest])
        compare([p.view.lowestLevel, p.view.highestLevel], [-50, -40])
        // The highest level is at least 0.1 dB above the lowest.
        p.view.maxLevel = -70
        compare(cells(p, 2), [lowest, lowest])
        p.view.minLevel = -60.2
        compare(cells(p, 2), [highest, highest])
    }

    function test_automaticRange() {
        const p = made()
        const lowests = createTemporaryObject(spies, test, { target: p.view, signalName: "lowestLevelChanged" })
        p.view.minLevel = NaN
        p.view.maxLevel = NaN
        compare([p.view.lowestLevel, p.view.highestLevel].map(isNaN), [true, true])
        append(p, [[-97, -97, -97, -97, -97, -97, -97, -33]])
        grab(p)
        compare([p.view.lowestLevel, p.view.highestLevel], [-100, -30])
        lowests.clear()
        // Noise changes nothing.
        for (let i = 0; i < 40; ++i) {
            append(p, [[-97, -96, -95, -98, -97, -97, -97, -33 + i % 3]])
            grab(p)
        }
        compare([p.view.lowestLevel, p.view.highestLevel], [-100, -30])
        compare(lowests.count, 0)
        p.view.minLevel = -90
        compare([p.view.lowestLevel, p.view.highestLevel], [-90, -30])
        compare(p.view.minLevel, -90)
        compare(p.view.maxLevel, NaN)
        compare(lowests.count, 1)
        // Other levels do.
        p.view.minLevel = NaN
        append(p, Array(128).fill([-60, -60, -60, -60, -60, -60, -60, -12]))
        grab(p)
        compare([p.view.lowestLevel, p.view.highestLevel], [-60, -10])
        p.trace.clear()
        append(p, [-120])
        grab(p)
        compare([p.view.lowestLevel, p.view.highestLevel], [-125, -115])
    }

    function test_autoRange() {
        const p = made()
        p.view.autoRange()
        compare([p.view.minLevel, p.view.maxLevel], [-100, -20])
        append(p, [NaN])
        p.view.autoRange()
        compare([p.view.minLevel, p.view.maxLevel], [-100, -20])
        append(p, [[-97.5, -97, -96, -95, -95, -97, -97, -33.2]])
        p.view.autoRange()
        compare([p.view.minLevel, p.view.maxLevel], [-98, -33])
        compare([p.view.lowestLevel, p.view.highestLevel], [-98, -33])
    }

    function test_levelsBeyondAllRanges_data() {
        return [
            { tag: "infinite", value: Infinity, kept: NaN },
            { tag: "huge", value: 1e300, kept: 1000 },
            { tag: "far below", value: -1e300, kept: -1000 }
        ]
    }
    function test_levelsBeyondAllRanges(data) {
        const p = made()
        append(p, [-60])
        p.view.minLevel = data.value
        compare(p.view.minLevel, data.kept)
        p.view.maxLevel = data.value
        compare(p.view.maxLevel, data.kept)
        verify(cells(p, 1)[0] !== none)
    }

    function test_paused() {
        const p = made()
        append(p, [-100, -20])
        p.view.paused = true
        compare(p.pauses.count, 1)
        append(p, [-100, -100, -100])
        compare(p.view.scroll, 3)
        compare(p.scrolls.count, 3)
        compare(cells(p, 3), [highest, lowest, none])
        compare(p.view.rowAt(10), 3)
        p.view.paused = false
        compare(p.view.scroll, 0)
        compare(cells(p, 6), [lowest, lowest, lowest, highest, lowest, none])
    }

    function test_scroll() {
        const p = made()
        p.trace.depth = 100
        append(p, Array.from({ length: 150 }, (_, i) => i % 10 === 0 ? -20 : -100))
        // Row 140 is ten rows back; the newest is number 149.
        p.view.scroll = 9
        compare(p.scrolls.count, 1)
        compare(cells(p, 20), Array.from({ length: 20 }, (_, i) => i % 10 === 0 ? highest : lowest))
        append(p, [-100])
        compare(p.view.scroll, 10)
        compare(cells(p, 2), [highest, lowest])
        p.view.scroll = 1000
        compare(p.view.scroll, 99)
        compare(cells(p, 2), [lowest, none])
        p.view.scroll = -1
        compare(p.view.scroll, 0)
        append(p, [-20])
        compare(p.view.scroll, 0)
        compare(cells(p, 2), [highest, lowest])
        compare(p.pauses.count, 0)
    }

    function test_whatIsShownStaysWhenTheTraceForgetsIt() {
        const p = made()
        p.trace.depth = 25
        append(p, Array(10).fill(-100).concat([-20]))
        p.view.paused = true
        compare(cells(p, 12), [highest].concat(Array(10).fill(lowest), [none]))
        append(p, Array(100).fill(-100))
        compare(cells(p, 12), [highest].concat(Array(10).fill(lowest), [none]))
        compare(p.view.scroll, 100)
        compare(p.view.levelAt(45, 11), -20)
        p.view.scroll = 24
        compare(cells(p, 3), [lowest, none, none])
    }

    function test_aDepthBelowTheHeight() {
        const p = made()
        p.trace.depth = 3
        append(p, [-20, -20, -20, -20, -20])
        compare(cells(p, 5), [highest, highest, highest, none, none])
        append(p, [-100])
        compare(cells(p, 5), [lowest, highest, highest, none, none])
        compare(p.view.rowAt(10 + 2 * 2), 2)
        compare(p.view.rowAt(10 + 2 * 3), -1)
    }

    function test_keys() {
        const p = made()
        append(p, Array(100).fill(-60))
        p.view.forceActiveFocus()
        keyClick(Qt.Key_PageDown)
        compare(p.view.scroll, 19)
        keyClick(Qt.Key_PageDown)
        keyClick(Qt.Key_PageUp)
        compare(p.view.scroll, 19)
        keyClick(Qt.Key_PageUp)
        keyClick(Qt.Key_PageUp)
        compare(p.view.scroll, 0)
        keyClick(Qt.Key_Up)
        verify(p.view.zoom.zoomed)
        p.view.interactive = false
        keyClick(Qt.Key_PageDown)
        compare(p.view.scroll, 0)
    }

    function test_moreAndFewerPointsThanPixels() {
        const p = made()
        // Six points of 0.5 MHz per pixel and more: the highest one shows.
        const many = Array(800).fill(-100)
        many[400] = -20
        verify(p.trace.append(many))
        grab(p)
        compare(pixels.at(80 * ratio, 11 * ratio), highest)
        compare(pixels.at(80 * ratio - 1, 11 * ratio), lowest)
        compare(pixels.at(81 * ratio, 11 * ratio), lowest)
        p.view.zoom.show(104, 104.1)
        grab(p)
        compare([40, 47, 48, 119].map(x => pixels.at(x * ratio, 11 * ratio)), [highest, highest, lowest, lowest])
    }

    function test_zoomWhilePausedKeepsRowsInTheirPlaces() {
        const p = made()
        const strong = row(-100)
        strong[2] = -20
        append(p, [strong, -100, strong, -100, -100])
        p.view.paused = true
        append(p, [strong])
        p.view.zoom.show(102, 107)
        grab(p)
        // Each point is 16 pixels wide now.
        compare([0, 1, 2, 3, 4, 5].map(row => cell(row, 0)), [lowest, lowest, highest, lowest, highest, none])
        compare([40, 55, 56].map(x => pixels.at(x * ratio, 15 * ratio)), [highest, highest, lowest])
        p.view.zoom.reset()
        compare(cells(p, 6, 2), [lowest, lowest, highest, lowest, highest, none])
        compare(cells(p, 6, 1), [lowest, lowest, lowest, lowest, lowest, none])
    }

    function test_viewsMayShareTheZoom() {
        const p = made()
        const other = createTemporaryObject(page, test, { trace: p.trace })
        other.view.zoom = p.view.zoom
        append(p, [[-20, -100, -100, -100, -100, -100, -100, -100]])
        p.view.zoom.show(101, 106)
        compare(cells(other, 1), [lowest])
        p.view.zoom.show(100, 105)
        compare(cells(other, 1), [highest])
    }

    function test_anotherLengthStartsAgain() {
        const p = made()
        append(p, [-20, -20, -20])
        p.view.scroll = 2
        compare(cells(p, 2), [highest, none])
        verify(p.trace.append(Array(4).fill(-100)))
        compare(p.view.scroll, 0)
        compare(cells(p, 2), [lowest, none])
        p.view.paused = true
        p.trace.clear()
        compare(p.view.paused, false)
        compare(cells(p, 1), [none])
        append(p, [-20])
        compare(cells(p, 2), [highest, none])
    }

    function test_anotherTrace() {
        const p = made()
        append(p, [-20, -20])
        const other = createTemporaryObject(sweeps, test)
        verify(other.append(row(-100)))
        compare(cells(p, 1), [highest])
        p.view.trace = other
        compare(cells(p, 2), [lowest, none])
        other.destroy()
        wait(0)
        compare(p.view.trace, null)
        compare(cells(p, 2), [none, none])
        p.view.trace = p.trace
        compare(cells(p, 3), [highest, highest, none])
    }

    function test_cursor() {
        const p = made()
        append(p, [[-90, -80, -70, -60, -50, -40, -30, NaN], -25])
        grab(p)
        compare(p.view.cursorLevel, NaN)
        mouseMove(p.view, 45, 13)
        compare(p.view.cursorLevel, -90)
        compare(p.view.cursorTime, "")
        compare(p.levels.count, 1)
        mouseMove(p.view, 46, 13)
        compare(p.levels.count, 1)
        mouseMove(p.view, 105, 13)
        compare(p.view.cursorLevel, -30)
        mouseMove(p.view, 115, 13)
        compare(p.view.cursorLevel, NaN)
        mouseMove(p.view, 55, 11)
        compare(p.view.cursorLevel, -25)
        // The rows move on under the pointer.
        append(p, [-33])
        grab(p)
        compare(p.view.cursorLevel, -33)
        mouseMove(p.view, 20, 11)
        compare(p.view.cursorLevel, NaN)
        compare(p.view.levelAt(45, 15), -90)
        compare([[39, 15], [120, 15], [45, 9], [45, 50], [45, 17], [NaN, 15], [45, NaN]].map(at => p.view.levelAt(at[0], at[1])),
                Array(7).fill(NaN))
        compare([NaN, -1e300, 1e300, 10, 12, 14, 16].map(y => p.view.rowAt(y)), [-1, -1, -1, 0, 1, 2, -1])
        compare(p.view.timeAt(11), "")
    }

    function test_cursorAndMarkersAreLines() {
        const p = made()
        append(p, [-100, -100, -100])
        p.view.cursorColor = "#ff0000"
        p.view.cursorFrequency = 104
        grab(p)
        compare([79, 80, 81].map(x => pixels.at(x * ratio, 40 * ratio)), [none, "#ff0000", none])
        compare(pixels.at(80 * ratio, 11 * ratio), "#ff0000")
        compare(pixels.at(80 * ratio, 9 * ratio), none)
        p.view.cursorFrequency = NaN
        p.view.markerColor = "#0000ff"
        p.view.markers = rows
        grab(p)
        compare([79, 80, 90, 91].map(x => pixels.at(x * ratio, 40 * ratio)), [none, none, "#0000ff", none])
    }
    ListModel { id: rows; ListElement { frequency: 105; level: -50 } ListElement { frequency: 300; level: -50 } }

    function test_labelsCountRowsWithoutTimes() {
        const p = made({ height: 160 })
        p.view.textColor = "#ff0000"
        append(p, Array(60).fill(-100))
        grab(p)
        // At least 50 pixels, that is 25 rows, from tick to tick: the next round number is 50.
        const ticks = down(39 * ratio, 0, 160 * ratio)
        compare(ticks, [none, "#ff0000", none, "#ff0000", none])
        compare(pixels.at(39 * ratio, 10 * ratio), "#ff0000")
        compare(pixels.at(39 * ratio, 110 * ratio), "#ff0000")
    }

    /// The lines of text among the labels, each as its first and its last row of pixels.
    function labelLines(p) {
        const right = (p.view.leftMargin - 8) * ratio  // left of the ticks
        const written = y => Array.from({ length: right }, (_, x) => pixels.at(x, y)).some(color => color !== none)
        const rows = Array.from({ length: pixels.height }, (_, y) => y).filter(written)
        return rows.filter(y => !rows.includes(y - 1)).map(y => [y, rows.find(last => last >= y && !rows.includes(last + 1))])
    }
    function test_labelsAtTheEdgesAreWhole() {
        const inside = made({ height: 160 })
        append(inside, Array(60).fill(-100))
        grab(inside)
        const heightOf = line => line[1] - line[0]
        const whole = heightOf(labelLines(inside)[1])
        // Round digits reach up to a pixel beyond straight ones; half a label is much less.
        const isWhole = line => Math.abs(heightOf(line) - whole) <= 1
        // The newest row is at the upper edge.
        const atTop = made({ height: 60 })
        atTop.view.topMargin = 0
        append(atTop, [-100])
        grab(atTop)
        compare(labelLines(atTop).map(isWhole), [true])
        // Midnight is at y = 2, 23:59:45 at y = 62, and 23:59:30 with the date at y = 122.
        const atBottom = made({ height: 132, width: 200 })
        atBottom.view.topMargin = 0
        atBottom.view.bottomMargin = 0
        atBottom.view.leftMargin = 110
        atBottom.view.rowHeight = 4
        recorded(atBottom)
        grab(atBottom)
        compare(labelLines(atBottom).map(isWhole), Array(5).fill(true))
    }

    // Sixty sweeps, each a second after the one before.
    TestFolder { id: folder }
    Component { id: recordings; RecordingSource {} }
    function recorded(p) {
        const second = k => ("0" + k).slice(-2)
        const lines = Array.from({ length: 60 }, (_, k) => "2024-05-04, 23:59:" + second(k) + ".5, 100000000, 102000000, "
            + "1000000, 5, -100, -" + (k + 20) + "\n")
        const source = createTemporaryObject(recordings, test, { trace: p.trace, source: folder.write("r.csv", lines.join("")) })
        tryCompare(source, "status", RecordingSource.Ready)
        tryCompare(p.trace, "count", 60)
    }
    function test_timesOfRows() {
        const p = made({ height: 160 })
        p.view.textColor = "#ff0000"
        recorded(p)
        grab(p)
        compare([9, 10, 11, 12, 70, 129, 130].map(y => p.view.timeAt(y)),
                ["", "2024-05-04 23:59:59.5", "2024-05-04 23:59:59.5", "2024-05-04 23:59:58.5", "2024-05-04 23:59:29.5",
                 "2024-05-04 23:59:00.5", ""])
        mouseMove(p.view, 100, 71)
        compare(p.view.cursorTime, "2024-05-04 23:59:29.5")
        compare(p.view.cursorLevel, -49)
        mouseMove(p.view, 100, 75)
        compare(p.view.cursorTime, "2024-05-04 23:59:27.5")
        mouseMove(p.view, 20, 75)
        compare(p.view.cursorTime, "")
        // 23:59:00 lies before the first row. The row of 23:59:29.5 ends at y = 72, where 29.5 s begin, and half a
        // second is a pixel: 23:59:30 is at y = 71. Midnight is half a second before the end of the last row.
        const ticks = Array.from({ length: 160 * ratio }, (_, y) => y)
            .filter(y => pixels.at(39 * ratio, y) === "#ff0000" && pixels.at(36 * ratio, y) === "#ff0000")
            .map(y => Math.floor(y / ratio)).filter((y, i, all) => i === 0 || y !== all[i - 1])
        compare(ticks, [11, 71])
    }

    function test_withoutRoom_data() {
        return [
            { tag: "no width", width: 0, height: 60 },
            { tag: "no height", width: 130, height: 0 },
            { tag: "less than the margins", width: 45, height: 15 },
            { tag: "one pixel", width: 51, height: 21 }
        ]
    }
    function test_withoutRoom(data) {
        const p = made()
        append(p, [-20])
        p.width = data.width
        p.height = data.height
        append(p, [-20])
        wait(20)
        p.width = 130
        p.height = 60
        compare(cells(p, 3), [highest, highest, none])
    }

    function test_rowHeight() {
        const view = createTemporaryObject(lone, test)
        const told = createTemporaryObject(spies, test, { target: view, signalName: "rowHeightChanged" })
        compare(view.rowHeight, 1)
        for (const [written, kept] of [[3, 3], [0, 1], [-5, 1], [64, 64], [65, 64]]) {
            view.rowHeight = written
            compare(view.rowHeight, kept)
        }
        compare(told.count, 3)
    }
}
