import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0

TestCase {
    id: test
    name: "FrequencyZoom"
    when: windowShown

    // 100 points of 0.2 MHz
    Component { id: sweeps; TraceModel { startFrequency: 88; stopFrequency: 108; updateInterval: 0 } }
    Component { id: zooms; FrequencyZoom {} }
    Component { id: views; TraceView { width: 260; height: 200 } }
    Component { id: spies; SignalSpy {} }

    readonly property var signalNames: ["low", "high", "wholeLow", "wholeHigh", "zoomed", "hasFrequencies", "cursor", "trace"]

    function trace(points) {
        const model = createTemporaryObject(sweeps, test)
        if (points) {
            verify(model.append(Array.from({ length: points }, () => -90)))
        }
        return model
    }
    function made() {
        return createTemporaryObject(zooms, test, { trace: trace(100) })
    }
    function compareShown(zoom, low, high) {
        fuzzyCompare(zoom.low, low, 1e-9)
        fuzzyCompare(zoom.high, high, 1e-9)
    }
    /// What action() tells of an object, by name.
    function toldBy(object, names, action) {
        const told = names.map(name => createTemporaryObject(spies, test, { target: object, signalName: name + "Changed" }))
        action()
        const counts = {}
        told.forEach((spy, i) => {
            if (spy.count > 0) {
                counts[names[i]] = spy.count
            }
            spy.target = null
        })
        return counts
    }

    function test_wholeRange() {
        const zoom = createTemporaryObject(zooms, test)
        compare([zoom.low, zoom.high, zoom.wholeLow, zoom.wholeHigh, zoom.cursor].map(isNaN), Array(5).fill(true))
        verify(!zoom.zoomed)
        verify(!zoom.hasFrequencies)
        const model = trace(100)
        compare(toldBy(zoom, signalNames, () => zoom.trace = model),
                { low: 1, high: 1, wholeLow: 1, wholeHigh: 1, hasFrequencies: 1, trace: 1 })
        compare([zoom.low, zoom.high, zoom.wholeLow, zoom.wholeHigh], [88, 108, 88, 108])
        verify(zoom.hasFrequencies)
        verify(!zoom.zoomed)
        compare(toldBy(zoom, signalNames, () => zoom.trace = model), {})
        compare(toldBy(zoom, signalNames, () => model.append(Array(100).fill(-80))), {})
        compare(toldBy(zoom, signalNames, () => zoom.trace = null),
                { low: 1, high: 1, wholeLow: 1, wholeHigh: 1, hasFrequencies: 1, trace: 1 })
        compare(zoom.low, NaN)
    }

    function test_pointsAreCountedWithoutFrequencies() {
        const model = trace()
        model.startFrequency = NaN
        model.append(Array(100).fill(-90))
        const zoom = createTemporaryObject(zooms, test, { trace: model })
        tryCompare(zoom, "wholeHigh", 100)
        compare(zoom.low, 0)
        verify(!zoom.hasFrequencies)
        zoom.show(40, 41)
        compareShown(zoom, 40, 45)
    }

    function test_show_data() {
        return [
            { tag: "within", low: 94, high: 104, shown: [94, 104], told: { low: 1, high: 1, zoomed: 1 } },
            { tag: "in the other order", low: 104, high: 94, shown: [94, 104], told: { low: 1, high: 1, zoomed: 1 } },
            { tag: "from the low end", low: 88, high: 104, shown: [88, 104], told: { high: 1, zoomed: 1 } },
            { tag: "beyond the low end", low: 80, high: 90, shown: [88, 90], told: { high: 1, zoomed: 1 } },
            { tag: "beyond both", low: 0, high: Infinity, shown: [88, 108], told: {} },
            { tag: "elsewhere", low: 500, high: 600, shown: [88, 108], told: {} },
            { tag: "less than five points", low: 94, high: 94.1, shown: [94, 95], told: { low: 1, high: 1, zoomed: 1 } },
            { tag: "less than five points at the end", low: 107.9, high: 108, shown: [107, 108], told: { low: 1, zoomed: 1 } },
            { tag: "NaN", low: NaN, high: NaN, shown: [88, 108], told: {} },
            { tag: "one NaN", low: NaN, high: 90, shown: [88, 90], told: { high: 1, zoomed: 1 } }
        ]
    }
    function test_show(row) {
        const zoom = made()
        compare(toldBy(zoom, signalNames, () => zoom.show(row.low, row.high)), row.told)
        compareShown(zoom, row.shown[0], row.shown[1])
        compare(toldBy(zoom, signalNames, () => zoom.show(row.low, row.high)), {})
        zoom.reset()
        compareShown(zoom, 88, 108)
    }

    function test_endsMayBeWrittenInAnyOrder() {
        const zoom = made()
        zoom.low = 94
        zoom.high = 96
        zoom.low = 104
        compareShown(zoom, 104, 105)
        zoom.high = 106
        compareShown(zoom, 104, 106)
        zoom.high = NaN
        compareShown(zoom, 104, 108)
    }

    function test_isKeptUntilThereArePoints() {
        const zoom = createTemporaryObject(zooms, test, { low: 94, high: 104 })
        compare(zoom.low, NaN)
        zoom.trace = trace(100)
        compareShown(zoom, 94, 104)
        verify(zoom.zoomed)
    }

    function test_zoom_data() {
        return [
            { tag: "in, at the middle", factor: 2, shown: [93, 103] },
            { tag: "in, at a frequency", factor: 4, at: 92, shown: [91, 96] },
            { tag: "in, at a frequency not shown", factor: 2, at: 500, shown: [98, 108] },
            { tag: "until five points remain", factor: 1e9, at: 98, shown: [97.5, 98.5] },
            { tag: "out", factor: 0.5, shown: [88, 108] },
            { tag: "zero", factor: 0, shown: [88, 108] },
            { tag: "negative", factor: -2, shown: [88, 108] },
            { tag: "infinite", factor: Infinity, shown: [88, 108] },
            { tag: "NaN", factor: NaN, shown: [88, 108] }
        ]
    }
    function test_zoom(row) {
        const zoom = made()
        row.at ? zoom.zoom(row.factor, row.at) : zoom.zoom(row.factor)
        compareShown(zoom, row.shown[0], row.shown[1])
    }

    function test_zoomOutStaysWithinTheWhole() {
        const zoom = made()
        zoom.show(88, 92)
        zoom.zoom(0.5, 92)
        compareShown(zoom, 88, 96)
        zoom.zoom(1e-9)
        compareShown(zoom, 88, 108)
        verify(!zoom.zoomed)
    }

    function test_pan_data() {
        return [
            { tag: "up", by: 2, shown: [96, 106] },
            { tag: "down", by: -2, shown: [92, 102] },
            { tag: "to the end", by: 1e9, shown: [98, 108] },
            { tag: "to the beginning", by: -1e9, shown: [88, 98] },
            { tag: "infinite", by: Infinity, shown: [94, 104] },
            { tag: "NaN", by: NaN, shown: [94, 104] }
        ]
    }
    function test_pan(row) {
        const zoom = made()
        zoom.show(94, 104)
        zoom.pan(row.by)
        compareShown(zoom, row.shown[0], row.shown[1])
    }

    function test_anotherWholeRange_data() {
        return [
            { tag: "wider", start: 80, stop: 120, shown: [94, 104] },
            { tag: "ends within what is shown", start: 88, stop: 100, shown: [94, 100] },
            { tag: "elsewhere", start: 400, stop: 500, shown: [400, 500] }
        ]
    }
    function test_anotherWholeRange(row) {
        const zoom = made()
        const all = createTemporaryObject(zooms, test, { trace: zoom.trace })
        zoom.show(94, 104)
        zoom.trace.startFrequency = row.start
        zoom.trace.stopFrequency = row.stop
        zoom.trace.append(Array(100).fill(-90))
        tryCompare(all, "wholeHigh", row.stop)
        compareShown(all, row.start, row.stop)
        compareShown(zoom, row.shown[0], row.shown[1])
    }

    function test_viewsShareIt() {
        const zoom = made()
        const a = createTemporaryObject(views, test, { trace: zoom.trace })
        const b = createTemporaryObject(views, test, { trace: zoom.trace })
        const own = a.zoom
        compareShown(own, 88, 108)
        verify(own !== b.zoom)
        compare(toldBy(a, ["zoom", "cursorFrequency"], () => a.zoom = zoom), { zoom: 1 })
        b.zoom = zoom
        zoom.show(94, 104)
        compare(a.frequencyAt(a.xOf(99)), b.frequencyAt(b.xOf(99)))
        compareShown(own, 88, 108)
        compare(toldBy(b, ["cursorFrequency"], () => a.cursorFrequency = 95), { cursorFrequency: 1 })
        compare(b.cursorFrequency, 95)
        compare(toldBy(a, ["zoom", "cursorFrequency"], () => a.zoom = null), { zoom: 1, cursorFrequency: 1 })
        compare(a.zoom, own)
        compare(a.cursorFrequency, NaN)
    }

    function test_objectsMayEndAtAnyTime() {
        const model = trace(100)
        const zoom = createTemporaryObject(zooms, test, { trace: model })
        const view = createTemporaryObject(views, test, { trace: model, zoom: zoom })
        compare(toldBy(view, ["zoom", "trace"], () => { zoom.destroy(); wait(0) }), { zoom: 1 })
        compareShown(view.zoom, 88, 108)
        const other = createTemporaryObject(zooms, test, { trace: model })
        compare(toldBy(view, ["zoom", "trace"], () => { model.destroy(); wait(0) }), { trace: 1 })
        compare(view.trace, null)
        compare(view.zoom.low, NaN)
        compare(other.trace, null)
        compare(other.wholeHigh, NaN)
    }
}
