import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "SetupModel"
    when: windowShown

    TestFolder { id: folder }

    Component {
        id: page
        Item {
            property SetupModel setups: SetupModel { id: setups }
            property ModelTester tester: ModelTester { model: setups }
            property SignalSpy statuses: SignalSpy { target: setups; signalName: "statusChanged" }
            property SignalSpy counts: SignalSpy { target: setups; signalName: "countChanged" }
        }
    }

    function setup(id, label) {
        return { id: id, label: label }
    }
    function read(p, source) {
        p.setups.source = source
        tryCompare(p.setups, "status", SetupModel.Ready)
    }

    function test_reads() {
        const p = createTemporaryObject(page, test)
        compare(p.tester.roles(), ["group", "label", "setupId"])
        compare(p.setups.status, SetupModel.Null)
        p.setups.source = folder.write("測定/s.json", JSON.stringify({
            spectrum: [{ label: "no id" }, setup("chp", "Channel power"), 7, setup("obw", "OBW")],
            coverage: [setup(1, 2), setup("map", "Map"), setup(null, null)],
            note: "ignored"
        }))
        compare(p.setups.status, SetupModel.Loading)
        tryCompare(p.setups, "status", SetupModel.Ready)
        compare(p.statuses.count, 2)
        compare(p.counts.count, 1)
        compare(p.setups.count, 5)
        compare(p.tester.takeChanges(), ["insert 0-4"])
        // The last of a group may have no texts, which ends a list that is asked until its texts end.
        compare(p.tester.values("setupId"), ["", "map", "", "chp", "obw"])
        compare(p.tester.values("label"), ["", "Map", "", "Channel power", "OBW"])
        compare(p.tester.values("group"), ["coverage", "coverage", "coverage", "spectrum", "spectrum"])
        p.setups.source = ""
        compare(p.setups.status, SetupModel.Null)
        compare(p.setups.count, 0)
    }

    function test_tellsWhatChanged_data() {
        return [
            { tag: "nothing", a: [setup("x", "X"), setup("y", "Y")], changes: [] },
            { tag: "a label", a: [setup("x", "X"), setup("y", "Z")], changes: ["change 1-1 label"] },
            { tag: "another id", a: [setup("x", "X"), setup("z", "Y")], changes: ["remove 1-1", "insert 1-1"] },
            { tag: "the same once more", a: [setup("x", "X"), setup("x", "X"), setup("y", "Y")],
              changes: ["insert 1-1"] },
            { tag: "none", a: [], changes: ["remove 0-1"] }
        ]
    }
    function test_tellsWhatChanged(row) {
        const p = createTemporaryObject(page, test)
        read(p, folder.write("s.json", JSON.stringify({ a: [setup("x", "X"), setup("y", "Y")] })))
        p.tester.takeChanges()
        folder.write("s.json", JSON.stringify({ a: row.a }))
        p.setups.reload()
        compare(p.setups.count, 2)
        tryCompare(p.setups, "status", SetupModel.Ready)
        compare(p.tester.takeChanges(), row.changes)
        compare(p.setups.count, row.a.length)
    }

    function test_reportsFailures() {
        const p = createTemporaryObject(page, test)
        read(p, folder.write("s.json", JSON.stringify({ a: [setup("x", "X")] })))
        folder.write("s.json", "[1]")
        p.setups.reload()
        tryCompare(p.setups, "status", SetupModel.Error)
        compare(p.setups.errorString, folder.path("s.json") + ": the top level is not an object")
        compare(p.tester.values("label"), ["X"])
        p.setups.source = folder.url("missing.json")
        compare(p.setups.errorString, "")
        tryCompare(p.setups, "status", SetupModel.Error)
        compare(p.setups.errorString, folder.path("missing.json") + ": No such file or directory")
        p.setups.source = "ftp://localhost/s.json"
        tryCompare(p.setups, "errorString", "ftp://localhost/s.json: is not a local file")
    }

    function test_readsResources() {
        const p = createTemporaryObject(page, test)
        read(p, "qrc:/setups.json")
        verify(p.setups.count > 0)
    }

    function test_objectsMayEndAtAnyTime() {
        const many = Array.from({ length: 5000 }, (_, i) => setup("id" + i, ""))
        const source = folder.write("many.json", JSON.stringify({ a: many }))
        for (let i = 0; i < 20; ++i) {
            const p = page.createObject(test)
            p.setups.source = source
            wait(i % 2 ? i : 0)
            p.destroy()
            wait(0)
        }
    }
}
