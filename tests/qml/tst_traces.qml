import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "TraceModel"
    when: windowShown

    TestFolder { id: folder }

    Component {
        id: page
        Item {
            property TraceModel trace: TraceModel { id: trace }
            property SignalSpy updates: SignalSpy { target: trace; signalName: "updated" }
            property SignalSpy clears: SignalSpy { target: trace; signalName: "cleared" }
            property SignalSpy depths: SignalSpy { target: trace; signalName: "depthChanged" }
            property SignalSpy points: SignalSpy { target: trace; signalName: "pointsChanged" }
            property SignalSpy counts: SignalSpy { target: trace; signalName: "countChanged" }
            property SignalSpy totals: SignalSpy { target: trace; signalName: "totalChanged" }
            property SignalSpy empties: SignalSpy { target: trace; signalName: "emptyChanged" }
            property SignalSpy starts: SignalSpy { target: trace; signalName: "startFrequencyChanged" }
            property SignalSpy stops: SignalSpy { target: trace; signalName: "stopFrequencyChanged" }
            property SignalSpy saves: SignalSpy { target: trace; signalName: "saved" }
            property SignalSpy errors: SignalSpy { target: trace; signalName: "errorStringChanged" }
        }
    }

    /// Each trace is told.
    function every() {
        const p = createTemporaryObject(page, test)
        p.trace.updateInterval = 0
        return p
    }
    /// As compare() of arrays, where NaN is NaN.
    function compareLevels(levels, expected) {
        compare([].slice.call(levels).map(String), expected.map(String))
    }

    function test_keepsTraces() {
        const p = every()
        compare(p.trace.depth, 1000)
        compare(p.trace.empty, true)
        compare(p.trace.startFrequency, NaN)
        p.trace.depth = 2
        verify(p.trace.append([-10, -20]))
        verify(p.trace.append([-30, NaN]))
        verify(p.trace.append([-20, -999]))
        compare(p.trace.points, 2)
        compare(p.trace.count, 2)
        compare(p.trace.total, 3)
        compare(p.trace.empty, false)
        compareLevels(p.trace.levels(TraceModel.Newest), [-20, NaN])
        compareLevels(p.trace.levels(TraceModel.Maximum), [-10, -20])
        compareLevels(p.trace.levels(TraceModel.Minimum), [-30, -20])
        compareLevels(p.trace.levels(TraceModel.Average), [-25, NaN])
        compareLevels(p.trace.frequencies(), [])
        // One signal for each change, and none without.
        compare([p.points.count, p.counts.count, p.totals.count, p.empties.count, p.clears.count], [1, 2, 3, 1, 1])
        p.trace.depth = 2
        compare(p.depths.count, 1)

        p.trace.clearHolds()
        compareLevels(p.trace.levels(TraceModel.Maximum), [NaN, NaN])
        compareLevels(p.trace.levels(TraceModel.Newest), [-20, NaN])
        compare(p.clears.count, 1)
        p.trace.clear()
        compare([p.trace.points, p.trace.count, p.trace.total, p.trace.empty], [2, 0, 0, true])
        compareLevels(p.trace.levels(TraceModel.Newest), [NaN, NaN])
        compare([p.points.count, p.counts.count, p.totals.count, p.empties.count, p.clears.count], [1, 3, 4, 2, 2])
    }

    function test_hasFrequencies() {
        const p = every()
        p.trace.startFrequency = 88
        p.trace.stopFrequency = 108
        compare([p.starts.count, p.stops.count, p.clears.count], [1, 1, 0])
        p.trace.append([-1, -2, -3, -4])
        compareLevels(p.trace.frequencies(), [88, 93, 98, 103])
        p.trace.append([-1, -2])
        compareLevels(p.trace.frequencies(), [88, 98])
        compare(p.trace.count, 1)
        p.trace.stopFrequency = 90
        compare([p.trace.startFrequency, p.trace.stopFrequency, p.trace.count, p.trace.points], [88, 90, 0, 0])
        p.trace.append([-1, -2])
        compareLevels(p.trace.frequencies(), [88, 89])
        // A range that is none leaves traces without frequencies.
        p.trace.startFrequency = 90
        p.trace.append([-1, -2])
        compareLevels(p.trace.frequencies(), [])
        p.trace.startFrequency = NaN
        p.trace.startFrequency = Infinity
        compare(p.trace.startFrequency, NaN)
        compare([p.starts.count, p.stops.count], [3, 2])
        compare(p.trace.count, 1)
    }

    function test_readsLists_data() {
        return [
            { tag: "array", list: [-1.5, -2], levels: [-1.5, -2] },
            { tag: "double precision", list: new Float64Array([-1.1, NaN]), levels: [-1.1, NaN] },
            { tag: "single precision", list: new Float32Array([-1.5, -2]), levels: [-1.5, -2] },
            { tag: "whole numbers", list: new Int16Array([-1, 2]), levels: [-1, 2] },
            { tag: "a part", list: new Float64Array([-1, -2, -3, -4]).subarray(1, 3), levels: [-2, -3] },
            { tag: "like an array", list: { length: 2, 0: -1, 1: -2 }, levels: [-1, -2] },
            { tag: "zeros", list: [0, -0], levels: [0, 0] },
            { tag: "zeros of an array", list: new Float64Array(2), levels: [0, 0] },
            { tag: "not measured", list: [-1, undefined, null, -999, -Infinity], levels: [-1, NaN, NaN, NaN, NaN] },
            { tag: "holes", list: [-1, , -3], levels: [-1, NaN, -3] },
            { tag: "no numbers", list: ["", "x", {}, [], false, () => 1], levels: [NaN, NaN, NaN, NaN, NaN, NaN] }
        ]
    }
    function test_readsLists(row) {
        const p = every()
        verify(p.trace.append(row.list))
        compareLevels(p.trace.levels(TraceModel.Newest), row.levels)
    }

    function test_refusesWhatIsNoList_data() {
        return [
            { tag: "nothing", list: undefined },
            { tag: "null", list: null },
            { tag: "number", list: 2 },
            { tag: "text", list: "12" },
            { tag: "empty", list: [] },
            { tag: "function", list: (a, b) => a },
            { tag: "object", list: {} },
            { tag: "negative length", list: { length: -2 } },
            { tag: "text as length", list: { length: "two" } },
            { tag: "too long", list: { length: 4194305 } },
            { tag: "far too long", list: { length: 1e300 } },
            { tag: "no typed array", list: Object.setPrototypeOf({ length: 3, buffer: new ArrayBuffer(8), byteOffset: -8,
                                                                   byteLength: 24 }, Float64Array.prototype) },
            { tag: "array without elements", list: new Array(4294967295) }
        ]
    }
    function test_refusesWhatIsNoList(row) {
        const p = every()
        p.trace.append([-1, -2])
        p.updates.clear()
        verify(!p.trace.append(row.list))
        compare(p.trace.count, 1)
        compareLevels(p.trace.levels(TraceModel.Newest), [-1, -2])
        compare(p.updates.count, 0)
    }

    AllocationCounter { id: allocations }

    function test_aMillionSweepsTakeNoMemory() {
        const trace = createTemporaryObject(lone, test, { depth: 50, updateInterval: 100000 })
        const markers = createTemporaryObject(sixMarkers, test, { trace: trace })
        for (let row = 0; row < 6; ++row) {
            markers.set(row, row)
        }
        const levels = new Float64Array(6).fill(-0.5)
        const append = times => {
            for (let i = 0; i < times; ++i) {
                levels[3] = -1 - i % 100
                trace.append(levels)
            }
        }
        // Sweeps allocate nothing; the engine does, less and less.
        const few = 10
        for (let i = 0; i < 179; ++i) {
            append(5000)
        }
        verify(allocations.during(() => append(5000)) < few)
        // The same where markers are told of each.
        trace.updateInterval = 0
        for (let i = 0; i < 19; ++i) {
            append(5000)
        }
        verify(allocations.during(() => append(5000)) < few)
        compare(trace.total, 1000000)
        compare(trace.count, 50)
        fuzzyCompare(markers.get(3).average, -75.5, 1e-9)
    }
    Component { id: lone; TraceModel {} }
    Component { id: sixMarkers; MarkerModel {} }

    function test_tellsAtMostOnceInAnInterval() {
        const p = createTemporaryObject(page, test)
        compare(p.trace.updateInterval, 33)
        p.trace.updateInterval = 200
        for (let i = 0; i < 50; ++i) {
            p.trace.append([-i])
        }
        compare(p.updates.count, 1)
        compare(p.trace.total, 1)
        tryCompare(p.updates, "count", 2)
        compare(p.trace.total, 50)
        wait(400)
        compare(p.updates.count, 2)
        // After a pause the next one is told at once.
        p.trace.append([-1])
        compare(p.updates.count, 3)
        p.trace.append([-1])
        p.trace.updateInterval = 0
        compare(p.updates.count, 4)
        compare(p.trace.total, 52)
    }

    function test_savesAllPoints_data() {
        return [
            { tag: "frequencies", start: 88, stop: 89,
              text: "frequencyMHz,newest,average,maximum,minimum\n"
                    + "88.000000,-20.00,-15.00,-10.00,-20.00\n88.500000,,-30.25,-30.25,-30.25\n" },
            { tag: "points", start: NaN, stop: NaN,
              text: "point,newest,average,maximum,minimum\n0,-20.00,-15.00,-10.00,-20.00\n1,,-30.25,-30.25,-30.25\n" }
        ]
    }
    function test_savesAllPoints(row) {
        const p = every()
        p.trace.startFrequency = row.start
        p.trace.stopFrequency = row.stop
        p.trace.append([-10, -30.25])
        p.trace.append([-20, NaN])
        p.trace.save(folder.url("Spur é " + row.tag + ".csv"))
        compare(p.trace.saving, true)
        tryCompare(p.saves, "count", 1)
        compare(p.saves.signalArguments[0][0], true)
        compare(p.trace.saving, false)
        compare(folder.read("Spur é " + row.tag + ".csv"), row.text)
    }

    function test_reportsFailuresToSave() {
        const p = every()
        p.trace.append([-10])
        p.trace.save(folder.url("missing/trace.csv"))
        tryCompare(p.saves, "count", 1)
        compare(p.saves.signalArguments[0][0], false)
        verify(p.trace.errorString.startsWith(folder.path("missing/trace.csv") + ": "), p.trace.errorString)
        p.trace.save("http://localhost/trace.csv")
        tryCompare(p.saves, "count", 2)
        compare(p.trace.errorString, "http://localhost/trace.csv: is not a local file")
        p.trace.save(folder.url("trace.csv"))
        tryCompare(p.saves, "count", 3)
        compare(p.saves.signalArguments[2][0], true)
        compare(p.trace.errorString, "")
        compare(p.errors.count, 3)
    }
}
