import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "RecordingSource"
    when: windowShown

    TestFolder { id: folder }

    Component {
        id: page
        Item {
            property TraceModel trace: TraceModel { id: trace; depth: 3; updateInterval: 0 }
            property RecordingSource source: RecordingSource { id: source; trace: trace }
            property SignalSpy statuses: SignalSpy { target: source; signalName: "statusChanged" }
            property SignalSpy errors: SignalSpy { target: source; signalName: "errorStringChanged" }
            property SignalSpy sweeps: SignalSpy { target: source; signalName: "sweepsChanged" }
            property SignalSpy positions: SignalSpy { target: source; signalName: "positionChanged" }
            property SignalSpy durations: SignalSpy { target: source; signalName: "durationChanged" }
            property SignalSpy runnings: SignalSpy { target: source; signalName: "runningChanged" }
            property SignalSpy clears: SignalSpy { target: trace; signalName: "cleared" }
        }
    }
    Component { id: bare; RecordingSource {} }
    Component { id: model; TraceModel {} }

    /// A hop of two points from a frequency on, at a second behind 10:00:00.
    function hop(second, low, levels) {
        return "2024-01-01, 10:00:" + ("0" + second.toFixed(1)).slice(-4) + ", "
            + low + "000000, " + (low + levels.length) + "000000, 1000000, 5, " + levels.map(level => typeof level === "string" ? level : level.toFixed(1)).join(", ") + "\n"
    }
    /// The levels of sweep k are -k - 1 and -k - 1.5 dBm.
    function sweep(k, seconds) {
        return hop(k * (seconds || 1), 100, [-k - 1, -k - 1.5])
    }
    function recording(sweeps, seconds) {
        return Array.from({ length: sweeps }, (_, k) => sweep(k, seconds)).join("")
    }
    function make(properties) {
        const p = createTemporaryObject(page, test)
        for (const name in properties || {}) {
            p.source[name] = properties[name]
        }
        return p
    }
    /// A program: a script of the shell.
    function run(script, more) {
        folder.write("recorder.sh", script)
        return make(Object.assign({ program: "sh", arguments: [folder.path("recorder.sh")] }, more))
    }
    /// Lines for a script to write.
    function lines(text) {
        return "printf '%s' '" + text + "'\n"
    }
    /// Lets a script wait for a file.
    function awaits(name) {
        folder.remove(name)
        return "while [ ! -e '" + folder.path(name) + "' ]; do sleep 0.02; done\n"
    }
    function levels(p, series) {
        return [].slice.call(p.trace.levels(series))
    }
    function newest(p) {
        return levels(p, TraceModel.Newest)
    }

    function test_readsAFile() {
        const p = make()
        compare(p.source.status, RecordingSource.Null)
        compare(p.source.position, 0)
        compare(p.source.duration, NaN)
        compare(p.source.progress, NaN)
        verify(p.source.running)
        p.source.source = folder.write("r.csv", recording(5))
        compare(p.source.status, RecordingSource.Loading)
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(p.statuses.count, 2)
        compare(p.errors.count, 0)
        compare(p.source.sweeps, 5)
        compare(p.source.position, 4)
        compare(p.source.duration, 4)
        compare(p.source.progress, 1)
        compare(p.source.brokenLines, 0)
        compare(p.source.note, "")
        verify(!p.source.live)
        verify(!p.source.seeking)
        verify(p.source.running)
        compare(p.runnings.count, 0)
        tryCompare(p.trace, "count", 3)
        compare(p.trace.points, 2)
        compare(p.trace.startFrequency, 100)
        compare(p.trace.stopFrequency, 102)
        compare(newest(p), [-5, -5.5])
        compare(levels(p, TraceModel.Maximum), [-1, -1.5])
        compare(levels(p, TraceModel.Minimum), [-5, -5.5])
        fuzzyCompare(levels(p, TraceModel.Average)[0], -4, 1e-9)
        compare([].slice.call(p.trace.frequencies()), [100, 101])
        // Nothing changes without a reason.
        const told = [p.statuses.count, p.positions.count, p.sweeps.count, p.durations.count]
        wait(100)
        compare([p.statuses.count, p.positions.count, p.sweeps.count, p.durations.count], told)
        p.source.source = ""
        compare(p.source.status, RecordingSource.Null)
        compare(p.source.sweeps, 0)
        compare(p.source.duration, NaN)
        compare(newest(p), [-5, -5.5])
    }

    function test_readsWhatRecordersWrite_data() {
        return [
            { tag: "no line end", text: recording(3).slice(0, -1), newest: [-3, -3.5], note: "" },
            { tag: "a cut line", text: recording(3).slice(0, -5), newest: [-2, -2.5],
              note: ":3: the last line has no line end and may be cut; it is left out" },
            { tag: "a lost hop", text: hop(0, 100, [-1, -2]) + hop(0, 102, [-3, -4]) + hop(1, 102, [-5, -6]),
              newest: [NaN, NaN, -5, -6], note: "" },
            { tag: "not measured", text: hop(0, 100, ["nan", "-inf"]), newest: [NaN, NaN], note: "" },
            { tag: "traces", text: "-1,-2,-3\n-4,-5,-6\n", newest: [-4, -5, -6], note: "", position: 1 },
            { tag: "broken lines", text: recording(2) + "x\n2024-01-01, 10:00:09, 1\n" + sweep(2), newest: [-3, -3.5],
              broken: 2, note: ": 2 lines in all made no sense and were skipped" }
        ]
    }
    function test_readsWhatRecordersWrite(row) {
        const p = make({ source: folder.write("r.csv", row.text) })
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(newest(p), row.newest)
        compare(p.source.brokenLines, row.broken || 0)
        compare(p.source.note, row.note && folder.path("r.csv") + row.note)
        if ("position" in row) {
            compare(p.source.position, row.position)
            compare(p.source.duration, row.position)
            compare(p.trace.startFrequency, NaN)
        }
    }

    function test_readsCompressedFiles() {
        folder.write("r.csv", recording(4))
        const packer = run("gzip -c '" + folder.path("r.csv") + "' > '" + folder.path("r.csv.gz") + "'\n" + lines(sweep(0)))
        tryCompare(packer.source, "status", RecordingSource.Ready)
        const p = make({ source: folder.url("r.csv.gz") })
        if (!folder.unpacksGzip()) {
            tryCompare(p.source, "status", RecordingSource.Error)
            verify(p.source.errorString.includes("r.csv.gz: is compressed; unpack it: gzip -dc"))
            return
        }
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(newest(p), [-4, -4.5])
        compare(p.source.duration, 3)
        compare(p.source.progress, 1)
        p.source.position = 1
        tryCompare(p.source, "seeking", false)
        compare(newest(p), [-2, -2.5])
        compare(p.source.duration, 3)
    }

    function test_reportsFailures_data() {
        return [
            { tag: "missing", error: ": " },  // and the system's words
            { tag: "empty", text: "", error: ": holds no sweep" },
            { tag: "no recording", text: "name\nx\n", broken: 1,
              error: ":2: neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, dB, ...) nor a "
                     + "trace of levels in dBm" }
        ]
    }
    function test_reportsFailures(row) {
        const name = "bad " + row.tag
        if ("text" in row) {
            folder.write(name, row.text)
        }
        const p = make({ source: folder.url(name) })
        compare(p.source.status, RecordingSource.Loading)
        tryCompare(p.source, "status", RecordingSource.Error)
        const error = folder.path(name) + row.error
        compare(p.source.errorString.slice(0, row.text === undefined ? error.length : undefined), error)
        compare(p.source.brokenLines, row.broken || 0)
        compare(p.errors.count, 1)
        compare(p.statuses.count, 2)
        folder.write(name, recording(1))
        p.source.restart()
        compare(p.source.status, RecordingSource.Loading)
        compare(p.source.errorString, "")
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(newest(p), [-1, -1.5])
        compare(p.source.brokenLines, 0)
    }

    function test_refusesRemoteFiles() {
        const p = make({ source: "http://localhost/r.csv" })
        tryCompare(p.source, "status", RecordingSource.Error)
        compare(p.source.errorString, "http://localhost/r.csv: is not a local file")
    }

    function test_readsEveryName_data() {
        return [{ tag: "資料/Каталог é.csv" }, { tag: "100 % #1?.csv" }]
    }
    function test_readsEveryName(row) {
        const p = make({ source: folder.write(row.tag, recording(2)) })
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(newest(p), [-2, -2.5])
    }

    function test_readsAReplacedFile() {
        const p = make({ source: folder.write("r.csv", recording(4)) })
        tryCompare(p.source, "status", RecordingSource.Ready)
        folder.write("r.csv", hop(0, 200, [-70, -71, -72]) + hop(5, 200, [-80, -81, -82]))
        p.source.position = 1
        tryCompare(p.source, "seeking", false)
        compare(newest(p), [-70, -71, -72])
        compare(p.source.duration, 5)
        tryCompare(p.trace, "startFrequency", 200)
        verify(!p.source.running)
        p.source.restart()
        verify(p.source.running)
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(newest(p), [-80, -81, -82])
        compare(p.source.sweeps, 2)
    }

    function test_needsATrace() {
        const source = createTemporaryObject(bare, test, { source: folder.write("r.csv", recording(2)) })
        wait(50)
        compare(source.status, RecordingSource.Null)
        const first = createTemporaryObject(model, test)
        source.trace = first
        compare(source.status, RecordingSource.Loading)
        tryCompare(source, "status", RecordingSource.Ready)
        tryCompare(first, "count", 2)
        const second = createTemporaryObject(model, test)
        source.trace = second
        tryCompare(second, "count", 2)
        second.destroy()
        tryCompare(source, "trace", null)
        compare(source.status, RecordingSource.Null)
        compare(first.count, 2)
    }

    // Position, levels from the newest back.
    function test_seeks_data() {
        const ten = recording(10)
        const traces = Array.from({ length: 10 }, (_, k) => (-k - 1) + "," + (-k - 1.5) + "\n").join("")
        return [
            { tag: "in the middle", text: ten, to: 5, position: 5, kept: 3, oldest: 3 },
            { tag: "between two sweeps", text: ten, to: 5.9, position: 5, kept: 3, oldest: 3 },
            { tag: "at the beginning", text: ten, to: 0, position: 0, kept: 1, oldest: 0 },
            { tag: "before it", text: ten, to: -7, position: 0, kept: 1, oldest: 0 },
            { tag: "fewer than the trace keeps", text: ten, to: 1, position: 1, kept: 2, oldest: 0 },
            { tag: "the last but one", text: ten, to: 8, position: 8, kept: 3, oldest: 6 },
            { tag: "tenths", text: recording(10, 0.1), to: 0.7, position: 0.7, kept: 3, oldest: 5 },
            { tag: "traces", text: traces, to: 6.5, position: 6, kept: 3, oldest: 4 },
            { tag: "the first trace", text: traces, to: 0, position: 0, kept: 1, oldest: 0 }
        ]
    }
    function test_seeks(row) {
        const p = make({ source: folder.write("r.csv", row.text) })
        tryCompare(p.source, "status", RecordingSource.Ready)
        p.statuses.clear()
        const last = row.position === 0.7 ? 0.9 : 9
        compare(p.source.duration, last)
        p.source.position = row.to
        verify(p.source.seeking)
        compare(p.source.position, Math.max(row.to, 0))
        compare(p.source.status, RecordingSource.Loading)
        tryCompare(p.source, "seeking", false)
        compare(p.source.position, row.position)
        compare(p.source.running, false)
        compare(p.runnings.count, 1)
        tryCompare(p.trace, "count", row.kept)
        const k = row.oldest + row.kept - 1
        compare(newest(p), [-k - 1, -k - 1.5])
        compare(levels(p, TraceModel.Maximum), [-row.oldest - 1, -row.oldest - 1.5])
        compare(levels(p, TraceModel.Minimum), newest(p))
        wait(50)
        compare(p.source.position, row.position)
        compare(p.source.duration, last)
        // From there on.
        p.source.running = true
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(p.statuses.count, 2)
        compare(p.source.position, last)
        compare(newest(p), [-10, -10.5])
        compare(levels(p, TraceModel.Maximum), [-row.oldest - 1, -row.oldest - 1.5])
    }

    function test_seeksBeyondTheEnd() {
        const p = make({ source: folder.write("r.csv", recording(5)) })
        tryCompare(p.source, "status", RecordingSource.Ready)
        p.source.position = 1
        tryCompare(p.source, "seeking", false)
        for (const far of [100, 1e300, Infinity]) {
            p.source.running = true
            p.source.position = far
            tryCompare(p.source, "status", RecordingSource.Ready)
            compare(p.source.position, 4)
            tryCompare(p.trace, "count", 3)
            compare(levels(p, TraceModel.Maximum), [-3, -3.5])
        }
        p.positions.clear()
        p.source.position = NaN
        p.source.position = 4
        compare(p.positions.count, 0)
        compare(p.source.status, RecordingSource.Ready)
    }

    function test_aNewerSeekReplacesAnOlder() {
        const p = make({ source: folder.write("r.csv", recording(60)) })
        for (let k = 0; k < 50; ++k) {
            p.source.position = k
            if (k % 5 === 0) {
                wait(k % 4)
            }
        }
        tryCompare(p.source, "seeking", false)
        compare(p.source.position, 49)
        tryCompare(p.trace, "count", 3)
        compare(newest(p), [-50, -50.5])
        compare(levels(p, TraceModel.Maximum), [-48, -48.5])
    }

    Component {
        id: begun
        RecordingSource {
            position: 2
            trace: TraceModel { depth: 3 }
        }
    }
    function test_beginsAtAPosition() {
        const source = createTemporaryObject(begun, test, { source: folder.write("r.csv", recording(5)) })
        compare(source.position, 2)
        verify(source.seeking)
        tryCompare(source, "seeking", false)
        compare(source.position, 2)
        compare(newest({ trace: source.trace }), [-3, -3.5])
        compare(source.duration, 4)
    }

    function test_loops() {
        const p = make({ source: folder.write("r.csv", recording(4)), loop: true })
        tryVerify(() => p.source.sweeps > 20)
        compare(p.clears.count, 1)
        compare(p.source.status, RecordingSource.Loading)
        p.source.loop = false
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(p.source.sweeps % 4, 0)
        compare(p.source.position, 3)
        compare(newest(p), [-4, -4.5])
        const before = p.source.sweeps
        p.source.loop = true
        compare(p.source.status, RecordingSource.Loading)
        tryVerify(() => p.source.sweeps > before)
        compare(p.clears.count, 1)
        p.source.stop()
        compare(p.source.status, RecordingSource.Ready)
        const stopped = p.source.sweeps
        wait(50)
        compare(p.source.sweeps, stopped)
    }

    function test_keepsThePaceOfTheRecording() {
        // Half a second between the first and the last sweep, at half the pace.
        const p = make({ speed: 0.5 })
        const begin = Date.now()
        p.source.source = folder.write("r.csv", recording(6, 0.1))
        tryCompare(p.source, "duration", 0.5)
        tryCompare(p.source, "status", RecordingSource.Ready, 10000)
        verify(Date.now() - begin >= 990, Date.now() - begin)
        verify(p.positions.count >= 3)
        compare(p.source.position, 0.5)
        compare(p.source.sweeps, 6)
    }

    function test_changesThePaceWhileItWaits() {
        const p = make({ speed: 1, source: folder.write("r.csv", hop(0, 100, [-1, -2]) + hop(50, 100, [-3, -4])) })
        tryCompare(p.source, "duration", 50)
        compare(p.source.sweeps, 1)
        p.source.speed = 10
        wait(100)
        compare(p.source.sweeps, 1)
        p.source.speed = -1
        compare(p.source.speed, 0)
        tryCompare(p.source, "status", RecordingSource.Ready, 1000)
        p.source.speed = NaN
        compare(p.source.speed, 0)
    }

    function test_goesOnAtThePaceBehindAPosition() {
        const p = make({ source: folder.write("r.csv", recording(10, 0.1)), running: false, speed: 0.5 })
        p.source.position = 0.4
        tryCompare(p.source, "seeking", false)
        compare(p.source.position, 0.4)
        compare(p.runnings.count, 1)
        p.source.running = true
        const begin = Date.now()
        tryCompare(p.source, "status", RecordingSource.Ready, 10000)
        verify(Date.now() - begin >= 950, Date.now() - begin)
        p.source.position = 0.5
        tryCompare(p.source, "seeking", false)
        verify(p.source.running)
        tryVerify(() => p.source.position > 0.5)
    }

    function test_pauses() {
        const p = make({ running: false, source: folder.write("r.csv", recording(5)) })
        wait(50)
        compare(p.source.status, RecordingSource.Loading)
        compare(p.source.sweeps, 0)
        p.source.running = true
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(p.source.sweeps, 5)
        p.source.loop = true
        tryVerify(() => p.source.sweeps > 5)
        p.source.running = false
        wait(50)
        const paused = p.source.sweeps
        wait(50)
        compare(p.source.sweeps, paused)
        compare(p.source.status, RecordingSource.Loading)
        p.source.running = true
        tryVerify(() => p.source.sweeps > paused)
    }

    function test_tellsOftenEnoughOnly() {
        const p = make({ loop: true, source: folder.write("r.csv", recording(50)) })
        tryVerify(() => p.source.sweeps > 0)
        p.sweeps.clear()
        const begin = Date.now()
        wait(500)
        const most = (Date.now() - begin) / 33 + 2
        verify(p.sweeps.count > 1 && p.sweeps.count <= most, p.sweeps.count)
        verify(p.positions.count <= most + 5, p.positions.count)
    }

    function test_readsAProgram() {
        const p = run(lines(recording(2)) + awaits("first") + lines(sweep(2) + sweep(3).slice(0, 30))
                      + awaits("second") + lines(sweep(3).slice(30)))
        compare(p.source.status, RecordingSource.Loading)
        tryCompare(p.source, "sweeps", 2)
        verify(p.source.live)
        compare(newest(p), [-2, -2.5])
        compare(p.source.status, RecordingSource.Loading)
        compare(p.source.progress, NaN)
        folder.write("first", "")
        tryCompare(p.source, "sweeps", 3)
        compare(newest(p), [-3, -3.5])
        compare(p.source.position, 2)
        compare(p.source.duration, NaN)
        p.source.position = 0
        compare(p.source.position, 2)
        verify(!p.source.seeking)
        folder.write("second", "")
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(newest(p), [-4, -4.5])
        compare(p.source.errorString, "")
        compare(p.source.note, "")
        compare(p.statuses.count, 2)
        compare(p.clears.count, 1)
    }

    function test_growsWithAProgram() {
        const p = run(lines(hop(0, 100, [-1, -2]) + hop(10, 100, [-3, -4])) + "sleep 0.1\n"
                      + lines(hop(10, 104, [-5, -6]) + hop(20, 100, [-7, -8]) + hop(20, 104, [-9, -10])))
        tryCompare(p.source, "status", RecordingSource.Ready)
        tryCompare(p.trace, "points", 4)
        compare([].slice.call(p.trace.frequencies()), [100, 101, 104, 105])
        compare(newest(p), [-7, -8, -9, -10])
        compare(levels(p, TraceModel.Maximum), [-1, -2, -5, -6])
        compare(p.trace.stopFrequency, 106)
    }

    function test_reportsHowAProgramEnded_data() {
        const two = recording(2)
        const begun = lines(two + sweep(2).slice(0, 30))
        return [
            { tag: "in the middle of a line", script: begun, note: ":3: the last line has no line end and may be cut; it "
              + "is left out" },
            { tag: "with a message", script: begun + "echo first >&2\necho 'lost the device' >&2\nexit 3\n",
              error: "sh: ended with code 3: lost the device" },
            { tag: "without one", script: begun + "exit 1\n", error: "sh: ended with code 1" },
            { tag: "killed", script: begun + "kill -KILL $$\n", error: "sh: was ended by signal 9" },
            { tag: "with a progress line", script: begun + "printf '10 %%\\r20 %%\\r' >&2\nexit 2\n",
              error: "sh: ended with code 2: 20 %" },
            { tag: "with much to say", script: begun + "yes message | head -n 100000 >&2\necho ' at  last ' >&2\nexit 2\n",
              error: "sh: ended with code 2: at last" },
            { tag: "well", script: lines(two) + "echo nothing to see >&2\n" },
            { tag: "with something left behind", script: lines(two) + "sleep 20 &\nexit 4\n",
              error: "sh: ended with code 4" }
        ]
    }
    function test_reportsHowAProgramEnded(row) {
        const p = run(row.script)
        tryCompare(p.source, "status", row.error ? RecordingSource.Error : RecordingSource.Ready)
        compare(p.source.errorString, row.error || "")
        compare(p.source.note, row.note ? "sh" + row.note : p.source.note)
        compare(p.source.sweeps, 2)
        compare(newest(p), [-2, -2.5])
    }

    function test_reportsProgramsWithoutSweeps_data() {
        return [
            { tag: "nothing", program: "true", error: /^true: holds no sweep$/ },
            { tag: "a failure", program: "false", error: /^false: ended with code 1$/ },
            { tag: "no program", program: "/none/such", error: /^\/none\/such: cannot be started: ./ },
            { tag: "not looked for in the folder", program: "recorder.sh", error: /^recorder.sh: cannot be started: ./ },
            { tag: "text", program: "printf", args: ["hello\nworld\n"], error: /^printf: holds no sweep$/ }
        ]
    }
    function test_reportsProgramsWithoutSweeps(row) {
        const p = make({ program: row.program, arguments: row.args || [] })
        tryCompare(p.source, "status", RecordingSource.Error)
        verify(row.error.test(p.source.errorString), p.source.errorString)
        compare(p.statuses.count, 2)
        compare(p.trace.count, 0)
    }

    function test_takesArgumentsAsTheyAre() {
        const p = make({ program: "printf", arguments: ["%s\n", "-1,-2", "$(echo -3,-4)", "-5,-6;-7", "資料 `x`", "-8,-9"] })
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(p.source.brokenLines, 3)
        compare(p.source.sweeps, 2)
        compare(newest(p), [-8, -9])
    }

    /// Whether a process of a script that has written its number is there, dead or alive.
    function exists() {
        return folder.hasProcess(Number(folder.read("pid")))
    }
    readonly property string tellsPid: "echo $$ > '" + folder.path("pid") + "'\n"

    function test_endsItsProgram_data() {
        const endless = lines(recording(2)) + "while :; do sleep 0.05; done\n"
        return [
            { tag: "with the object", script: endless, end: p => p.destroy() },
            { tag: "stopped", script: endless, end: p => p.source.stop(), status: RecordingSource.Ready },
            { tag: "another program", script: endless, end: p => p.source.program = "", status: RecordingSource.Null },
            { tag: "the trace ends", script: endless, end: p => p.trace.destroy(), status: RecordingSource.Null },
            { tag: "paused", script: endless, end: p => { p.source.running = false; p.source.stop() },
              status: RecordingSource.Ready },
            { tag: "deaf", script: "trap '' TERM\n" + endless, end: p => p.destroy() },
            { tag: "with a full pipe", script: "exec yes -- '-1,-2'\n", end: p => { p.source.running = false; wait(50); p.destroy() } }
        ]
    }
    function test_endsItsProgram(row) {
        folder.remove("pid")
        const p = run(tellsPid + row.script)
        tryVerify(() => p.source.sweeps > 0)
        verify(exists())
        row.end(p)
        tryVerify(() => !exists(), 5000)
        if ("status" in row) {
            tryCompare(p.source, "status", row.status)
            compare(p.source.errorString, "")
        }
    }

    function test_startsItsProgramOnce() {
        folder.write("starts", "")
        const p = run("echo x >> '" + folder.path("starts") + "'\n" + lines(recording(2)) + "sleep 10\n", { running: false })
        wait(50)
        compare(folder.read("starts"), "")
        compare(p.source.status, RecordingSource.Loading)
        p.source.running = true
        tryCompare(p.source, "sweeps", 2)
        p.source.running = false
        p.source.running = true
        p.source.source = folder.url("r.csv")
        wait(50)
        compare(folder.read("starts"), "x\n")
        p.source.restart()
        compare(p.source.sweeps, 0)
        tryCompare(p.source, "sweeps", 2)
        compare(folder.read("starts"), "x\nx\n")
        p.source.program = ""
        compare(p.source.status, RecordingSource.Loading)
        p.source.source = folder.write("r.csv", recording(2))
        tryCompare(p.source, "status", RecordingSource.Ready)
        compare(newest(p), [-2, -2.5])
    }

    function test_readsAFifo() {
        const fifo = folder.makeFifo("fifo")
        // Nobody writes.
        const p = make({ source: fifo })
        tryCompare(p.source, "live", true)
        p.source.running = false
        p.source.running = true
        p.source.restart()
        wait(50)
        compare(p.source.status, RecordingSource.Loading)
        p.destroy()
        wait(0)
        const other = make({ source: fifo, position: 3 })
        wait(50)
        const writer = run("{\n" + lines(recording(2)) + awaits("more") + lines(sweep(2)) + "} > '" + folder.path("fifo") + "'\n")
        tryCompare(other.source, "sweeps", 2)
        folder.write("more", "")
        tryCompare(other.source, "status", RecordingSource.Ready)
        compare(newest(other), [-3, -3.5])
        compare(other.source.position, 2)
        verify(!other.source.seeking)
        tryCompare(writer.source, "status", RecordingSource.Error)
    }

    function test_objectsMayEndAtAnyTime() {
        const source = folder.write("r.csv", recording(60))
        for (let i = 0; i < 30; ++i) {
            const p = page.createObject(test)
            p.source.source = source
            p.source.loop = true
            if (i % 2) {
                wait(i % 10)
            }
            if (i % 3) {
                p.source.position = i
            }
            if (i % 5 === 0) {
                p.trace.destroy()
            }
            p.destroy()
            wait(0)
        }
    }
}
