import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "MarkerModel"
    when: windowShown

    Component {
        id: page
        Item {
            property TraceModel trace: TraceModel { id: trace; updateInterval: 0 }
            property MarkerModel markers: MarkerModel { id: markers; trace: trace }
            property ModelTester tester: ModelTester { model: markers }
            property SignalSpy traces: SignalSpy { target: markers; signalName: "traceChanged" }
            property SignalSpy limits: SignalSpy { target: markers; signalName: "limitChanged" }
            property SignalSpy excursions: SignalSpy { target: markers; signalName: "peakExcursionChanged" }
        }
    }

    /// Ten points from 100 MHz on, 1 MHz apart.
    function onTenPoints(traces) {
        const p = createTemporaryObject(page, test)
        p.trace.startFrequency = 100
        p.trace.stopFrequency = 110
        traces.forEach(trace => p.trace.append(trace))
        return p
    }
    function flat(level) {
        return new Float64Array(10).fill(level)
    }
    /// Of a row, the roles by their names; NaN is NaN.
    function compareRow(markers, row, expected) {
        const values = markers.get(row)
        for (const role in expected) {
            compare(values[role], expected[role], role)
        }
    }
    readonly property var none: ({ valid: false, point: -1, pointFrequency: NaN, level: NaN, average: NaN, powerMean: NaN,
                                   maximum: NaN, minimum: NaN, above: NaN, delta: NaN, deltaFrequency: NaN })

    function test_hasSixRows() {
        const p = createTemporaryObject(page, test)
        compare(p.markers.count, 6)
        compare(p.tester.roles(), ["above", "average", "delta", "deltaFrequency", "frequency", "level", "maximum", "minimum",
                                   "point", "pointFrequency", "powerMean", "valid"])
        compare(p.tester.values("valid"), [false, false, false, false, false, false])
        compare(p.markers.limit, NaN)
        compare(p.markers.peakExcursion, 6)
        for (let row = 0; row < 6; ++row) {
            compare(Object.keys(p.markers.get(row)).sort(), p.tester.roles())
            compareRow(p.markers, row, test.none)
            compareRow(p.markers, row, { frequency: NaN })
        }
        compare(Object.keys(p.markers.get(6)), [])
        compare(Object.keys(p.markers.get(-1)), [])
    }

    function test_givesStatistics() {
        // Levels of point 3: -10, not measured, -20 dBm. By hand: (0.1 mW + 0.01 mW) / 2 = 0.055 mW = -12.5964 dBm.
        const second = flat(-70)
        second[3] = NaN
        const p = onTenPoints([flat(-10), second, flat(-20)])
        p.markers.limit = -15
        verify(p.markers.set(0, 103.2))
        compareRow(p.markers, 0, { frequency: 103.2, valid: true, point: 3, pointFrequency: 103, level: -20, average: -15,
                                   maximum: -10, minimum: -20, above: 1, delta: 0, deltaFrequency: 0 })
        fuzzyCompare(p.markers.get(0).powerMean, -12.596373, 1e-6)
        // Elsewhere: -10, -70, -20.
        verify(p.markers.set(5, 109.9))
        const levels = flat(-30)
        levels[9] = -25.5
        p.trace.append(levels)
        compareRow(p.markers, 0, { level: -30, average: -20, above: 1 })
        compareRow(p.markers, 5, { point: 9, level: -25.5, average: -31.375, maximum: -10, minimum: -70, above: 1,
                                   delta: 4.5, deltaFrequency: 6 })
        // Without a limit nothing is counted.
        p.markers.limit = NaN
        compareRow(p.markers, 0, { above: NaN })
        compare(p.limits.count, 2)
        // Only the traces kept count.
        p.trace.depth = 2
        compareRow(p.markers, 5, { average: -22.75, maximum: -20, minimum: -25.5 })
    }

    function test_isNotValid_data() {
        return [
            { tag: "below the band", frequency: 99.9, point: -1 },
            { tag: "above the band", frequency: 110.1, point: -1 },
            { tag: "no number", frequency: NaN, point: -1 },
            { tag: "infinite", frequency: Infinity, chosen: NaN, point: -1 },
            { tag: "not a number", frequency: "x", chosen: NaN, point: -1 },
            { tag: "not measured", frequency: 104, point: 4, pointFrequency: 104 }
        ]
    }
    function test_isNotValid(row) {
        const levels = flat(-10)
        levels[4] = NaN
        const p = onTenPoints([levels])
        p.markers.set(0, 100)
        verify(p.markers.set(1, row.frequency))
        compareRow(p.markers, 1, Object.assign({}, test.none, { deltaFrequency: row.point < 0 ? NaN : 4, point: row.point,
            frequency: "chosen" in row ? row.chosen : row.frequency, pointFrequency: row.pointFrequency || NaN }))
    }

    CommandOutput { id: command }

    Component {
        id: recorded
        Item {
            property alias recording: recording
            property alias markers: markers
            TraceModel { id: trace }
            RecordingSource { id: recording; trace: trace }
            MarkerModel { id: markers; trace: trace; limit: -60 }
            property alias depth: trace.depth
        }
    }
    function test_showsTheNumbersOfTheCommand_data() {
        return [
            { tag: "hundred sweeps", file: "fm_band.csv", depth: 100, frequencies: [88, 90.02, 98.3, 100, 104.61, 107.99] },
            { tag: "one sweep", file: "fm_band.csv", depth: 1, frequencies: [88, 98.3] },
            { tag: "all", file: "fm_next_day.csv", depth: 1000, frequencies: [95.7, 98.3] },
            { tag: "several bands", file: "wifi_band.csv", depth: 50, frequencies: [2412, 2437.2, 2472] }
        ]
    }
    function test_showsTheNumbersOfTheCommand(row) {
        if (!command.exists()) {
            skip("the command is not built")
        }
        const p = createTemporaryObject(recorded, test, { depth: row.depth })
        row.frequencies.forEach((frequency, i) => p.markers.set(i, frequency))
        p.recording.source = command.sample(row.file)
        tryCompare(p.recording, "status", RecordingSource.Ready)
        const printed = JSON.parse(command.of(["trace", row.file, "--more", "--limit", "-60", "--keep", String(row.depth), "--format",
            "json"].concat(...row.frequencies.map(frequency => ["--marker", frequency + "MHz"]))))
        compare(printed.length, row.frequencies.length)
        tryVerify(() => p.markers.get(0).average === printed[0].average)
        printed.forEach((expected, i) => compareRow(p.markers, i, {
            frequency: row.frequencies[i], point: expected.point, pointFrequency: expected.frequencyMHz,
            average: expected.average, powerMean: expected.powerMean, maximum: expected.maximum,
            minimum: expected.minimum, above: expected.above
        }))
    }

    function test_placesLikeTheCommand_data() {
        return [
            { tag: "on a point", frequency: 102, point: 2 },
            { tag: "lower of two equally near", frequency: 102.5, point: 2 },
            { tag: "upper one", frequency: 102.6, point: 3 },
            { tag: "first", frequency: 100, point: 0 },
            { tag: "end of the last bin", frequency: 110, point: 9 }
        ]
    }
    function test_placesLikeTheCommand(row) {
        const p = onTenPoints([flat(-10)])
        p.markers.set(2, row.frequency)
        compareRow(p.markers, 2, { frequency: row.frequency, point: row.point, pointFrequency: 100 + row.point })
    }

    function test_usesPointsWithoutFrequencies() {
        const p = createTemporaryObject(page, test)
        p.trace.append([-1, -5, -3])
        p.markers.set(0, 2)
        p.markers.set(1, 3)
        p.markers.set(2, -0.6)
        compareRow(p.markers, 0, { point: 2, pointFrequency: 2, level: -3 })
        compareRow(p.markers, 1, { point: -1, valid: false })
        compareRow(p.markers, 2, { point: -1, valid: false })
        verify(p.markers.toMinimum(3))
        compareRow(p.markers, 3, { frequency: 1, level: -5, delta: -2, deltaFrequency: -1 })
    }

    function test_keepsTheFrequency() {
        const p = onTenPoints([flat(-10)])
        p.markers.set(0, 107.2)
        p.trace.append([-1, -2])
        compareRow(p.markers, 0, { frequency: 107.2, point: 1, pointFrequency: 105, level: -2 })
        p.trace.stopFrequency = 104
        p.trace.append([-1, -2])
        compareRow(p.markers, 0, Object.assign({ frequency: 107.2 }, test.none))
        p.trace.stopFrequency = 110
        p.trace.append(flat(-3))
        compareRow(p.markers, 0, { frequency: 107.2, point: 7, level: -3 })
        p.trace.clear()
        compareRow(p.markers, 0, { frequency: 107.2, valid: false, level: NaN, average: NaN })
        const other = createTemporaryObject(lone, test)
        other.append([-8, -9])
        p.markers.trace = other
        compareRow(p.markers, 0, { frequency: 107.2, valid: false })
        p.markers.set(0, 1)
        compareRow(p.markers, 0, { level: -9, average: -9 })
        compare(p.traces.count, 1)
    }
    Component { id: lone; TraceModel { updateInterval: 0 } }

    function test_tellsWhatChanged() {
        const p = onTenPoints([flat(-10)])
        const all = " level average powerMean maximum minimum"
        compare(p.tester.takeChanges(), [])
        p.markers.set(1, 103)
        compare(p.tester.takeChanges(), ["change 1-1 frequency valid point pointFrequency" + all])
        p.markers.set(1, 103)
        compare(p.tester.takeChanges(), [])
        p.markers.set(1, 103.1)
        compare(p.tester.takeChanges(), ["change 1-1 frequency"])
        p.trace.append(flat(-10))
        compare(p.tester.takeChanges(), [])
        p.trace.append(flat(-20))
        compare(p.tester.takeChanges(), ["change 1-1 level average powerMean minimum"])
        p.markers.limit = -30
        compare(p.tester.takeChanges(), ["change 1-1 above"])
        p.markers.limit = -30
        p.markers.peakExcursion = 3
        p.markers.peakExcursion = 3
        compare([p.limits.count, p.excursions.count], [1, 1])
        compare(p.tester.takeChanges(), [])
        // A reference gives the others their difference.
        p.markers.set(0, 100)
        compare(p.tester.takeChanges().slice(1), ["change 1-1 delta deltaFrequency"])
        p.markers.clear(0)
        compare(p.tester.takeChanges().length, 2)
        p.markers.clear(0)
        p.markers.clear(6)
        verify(!p.markers.set(6, 100))
        verify(!p.markers.set(-1, 100))
        compare(p.tester.takeChanges(), [])
        p.markers.clear(1)
        compareRow(p.markers, 1, Object.assign({ frequency: NaN }, test.none))
    }

    Component {
        id: table
        Repeater {
            Item {
                required property var model
            }
        }
    }
    function test_isWrittenByDelegates() {
        const p = onTenPoints([[-1, -2, -3, -4, -5, -6, -7, -8, -9, -10]])
        const rows = createTemporaryObject(table, p, { model: p.markers })
        compare(rows.count, 6)
        rows.itemAt(3).model.frequency = 104
        compare(rows.itemAt(3).model.frequency, 104)
        compare(rows.itemAt(3).model.level, -5)
        compareRow(p.markers, 3, { frequency: 104, level: -5 })
        rows.itemAt(3).model.frequency = NaN
        compareRow(p.markers, 3, { frequency: NaN, valid: false })
    }

    function test_findsPeaks() {
        //                        100  101  102  103  104  105  106  107  108  109
        const p = onTenPoints([[-80, -50, -80, -60, -63, -58, -80, -40, -80, -90]])
        verify(p.markers.toPeak(0))
        compareRow(p.markers, 0, { frequency: 107, level: -40 })
        verify(p.markers.toMinimum(1))
        compareRow(p.markers, 1, { frequency: 109, level: -90 })
        // One on no point comes from the end.
        verify(p.markers.nextPeak(2, 1))
        compareRow(p.markers, 2, { frequency: 101 })
        verify(p.markers.nextPeak(3, -1))
        compareRow(p.markers, 3, { frequency: 107 })
        // 103 MHz is 3 dB up only.
        verify(p.markers.nextPeak(2, 1))
        compareRow(p.markers, 2, { frequency: 105 })
        verify(p.markers.nextPeak(2, 1))
        compareRow(p.markers, 2, { frequency: 107 })
        verify(!p.markers.nextPeak(2, 1))
        compareRow(p.markers, 2, { frequency: 107 })
        p.markers.peakExcursion = 3
        verify(p.markers.nextPeak(2, -1))
        verify(p.markers.nextPeak(2, -1))
        compareRow(p.markers, 2, { frequency: 103 })
        p.markers.set(2, 104.2)
        verify(p.markers.nextPeak(2, -1))
        compareRow(p.markers, 2, { frequency: 103 })
        verify(p.markers.nextPeak(2, -1))
        verify(!p.markers.nextPeak(2, -1))
        compareRow(p.markers, 2, { frequency: 101 })
        verify(!p.markers.nextPeak(2, 0))
        // The newest trace counts.
        p.trace.append([-80, -80, -80, -80, -30, -80, -80, -40, -80, -90])
        verify(p.markers.toPeak(0))
        compareRow(p.markers, 0, { frequency: 104 })
    }

    function test_findsNoPeaksInNothing() {
        const p = createTemporaryObject(page, test)
        const search = row => [p.markers.toPeak(row), p.markers.toMinimum(row), p.markers.nextPeak(row, 1),
                               p.markers.nextPeak(row, -1)]
        const no = [false, false, false, false]
        compare(search(0), no)
        p.trace.append([NaN, -999])
        compare(search(0), no)
        p.markers.trace = null
        compare(search(0), no)
        p.markers.trace = p.trace
        p.trace.append([-1, -9, -3, -9])
        compare(search(6), no)
        compare(search(-1), no)
        compare(search(0), [true, true, true, false])
    }

    function test_takesNothingOverFromAnotherTrace() {
        const first = createTemporaryObject(lone, test)
        const second = createTemporaryObject(lone, test)
        first.append([-1, -2])
        second.append([-8, -9])
        const p = createTemporaryObject(page, test)
        p.markers.set(0, 1)
        p.markers.trace = first
        compareRow(p.markers, 0, { level: -2, average: -2 })
        p.markers.trace = second
        compareRow(p.markers, 0, { level: -9, average: -9, maximum: -9 })
        p.markers.trace = first
        compareRow(p.markers, 0, { level: -2, average: -2, minimum: -2 })
    }

    function test_outlivesTheTrace() {
        const p = createTemporaryObject(page, test)
        const trace = lone.createObject(test)
        trace.append([-1, -2])
        p.markers.trace = trace
        p.markers.set(0, 1)
        compareRow(p.markers, 0, { level: -2 })
        p.traces.clear()
        trace.destroy()
        tryCompare(p.markers, "trace", null)
        compare(p.traces.count, 1)
        compareRow(p.markers, 0, Object.assign({ frequency: 1 }, test.none))
    }
}
