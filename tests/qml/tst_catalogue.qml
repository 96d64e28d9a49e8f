import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "Catalogue"
    when: windowShown

    TestFolder { id: folder }

    Component {
        id: page
        Item {
            property Catalogue catalogue: Catalogue { id: catalogue }
            property ChoiceModel choices: ChoiceModel { id: choices; catalogue: catalogue; item: "atten" }
            property ModelTester tester: ModelTester { model: choices }
            property SignalSpy statuses: SignalSpy { target: catalogue; signalName: "statusChanged" }
            property SignalSpy errors: SignalSpy { target: catalogue; signalName: "errorStringChanged" }
            property SignalSpy items: SignalSpy { target: catalogue; signalName: "itemsChanged" }
            property SignalSpy sources: SignalSpy { target: catalogue; signalName: "sourceChanged" }
            property SignalSpy counts: SignalSpy { target: choices; signalName: "countChanged" }
        }
    }

    function choice(id, label, code, sequence) {
        return { id: id, label: label, "enum": code, dispSeq: sequence }
    }
    readonly property var auto: choice("auto", "Auto", 0, 1)
    readonly property var manual: choice("man", "Manual", 1, 2)
    readonly property var hidden: choice("cal", "Calibration", 7, 0)

    function write(name, items) {
        return folder.write(name, JSON.stringify(items))
    }
    function read(p, source) {
        p.catalogue.source = source
        tryCompare(p.catalogue, "status", Catalogue.Ready)
    }

    function test_reads() {
        const p = createTemporaryObject(page, test)
        compare(p.catalogue.status, Catalogue.Null)
        compare(p.catalogue.items, [])
        compare(p.choices.count, 0)
        compare(p.tester.roles(), ["choiceId", "code", "enabled", "label", "sequence"])

        p.catalogue.source = write("c.json", {
            trigger: [choice("ext", "External", 2, 1)], atten: [test.manual, test.hidden, test.auto], empty: [], version: 3
        })
        compare(p.catalogue.status, Catalogue.Loading)
        compare(p.choices.count, 0)
        tryCompare(p.catalogue, "status", Catalogue.Ready)
        compare(p.statuses.count, 2)
        compare(p.items.count, 1)
        compare(p.errors.count, 0)
        compare(p.catalogue.errorString, "")
        compare(p.catalogue.items, ["atten", "trigger"])
        compare(p.choices.count, 2)
        compare(p.counts.count, 1)
        compare(p.tester.takeChanges(), ["insert 0-1"])
        compare(p.tester.values("choiceId"), ["auto", "man"])
        compare(p.tester.values("label"), ["Auto", "Manual"])
        compare(p.tester.values("code"), [0, 1])
        compare(p.tester.values("sequence"), [1, 2])
        compare(p.tester.values("enabled"), [true, true])

        p.choices.showHidden = true
        compare(p.tester.takeChanges(), ["insert 0-0"])
        compare(p.tester.values("choiceId"), ["cal", "auto", "man"])
        compare(p.tester.values("enabled"), [false, true, true])
        p.choices.showHidden = false
        compare(p.tester.takeChanges(), ["remove 0-0"])
        p.choices.item = "trigger"
        compare(p.tester.values("label"), ["External"])
        p.choices.item = "Trigger"
        compare(p.choices.count, 0)
    }

    function test_sortsBySequenceCodeAndId() {
        const p = createTemporaryObject(page, test)
        read(p, write("order.json", {
            atten: [choice("c", "", 2, 1), choice("b", "", 1, 1), choice("a", "", 1, 1), choice("d", "", 0, 2)]
        }))
        compare(p.tester.values("choiceId"), ["a", "b", "c", "d"])
    }

    function test_tellsWhatChanged_data() {
        return [
            { tag: "nothing", atten: [test.auto, test.manual], changes: [] },
            { tag: "a label", atten: [test.auto, choice("man", "By hand", 1, 2)], changes: ["change 1-1 label"] },
            { tag: "several", atten: [choice("AUTO", "Auto", 3, 1), test.manual], changes: ["change 0-0 choiceId code"] },
            { tag: "inserted", atten: [test.auto, choice("x", "", 5, 1), test.manual], changes: ["insert 1-1"] },
            { tag: "appended", atten: [test.auto, test.manual, choice("x", "", 5, 3)], changes: ["insert 2-2"] },
            { tag: "removed", atten: [test.manual], changes: ["remove 0-0"] },
            { tag: "no longer offered", atten: [test.auto, choice("man", "Manual", 1, 0)], changes: ["remove 1-1"] },
            { tag: "swapped", atten: [choice("auto", "Auto", 0, 2), choice("man", "Manual", 1, 1)],
              changes: ["remove 0-1", "insert 0-1"] },
            { tag: "another item", atten: [], changes: ["remove 0-1"] }
        ]
    }
    function test_tellsWhatChanged(row) {
        const p = createTemporaryObject(page, test)
        const other = [choice("x", "", 1, 1)]
        read(p, write("changes.json", { atten: [test.auto, test.manual], other: other }))
        p.tester.takeChanges()
        p.counts.clear()
        const before = p.choices.count
        write("changes.json", { atten: row.atten, other: other })
        p.catalogue.reload()
        compare(p.catalogue.status, Catalogue.Loading)
        compare(p.choices.count, before)
        tryCompare(p.catalogue, "status", Catalogue.Ready)
        compare(p.tester.takeChanges(), row.changes)
        compare(p.counts.count, p.choices.count === before ? 0 : 1)
        compare(p.sources.count, 1)
    }

    function test_mergesFiles() {
        const p = createTemporaryObject(page, test)
        const first = write("first.json", { atten: [test.auto, test.manual], a: [choice("x", "", 1, 1)] })
        const second = write("second.json", { atten: [choice("MAN", "By hand", 1, 2)], b: [choice("y", "", 1, 1)] })
        p.catalogue.sources = [first, second]
        compare(p.catalogue.source, first)
        tryCompare(p.catalogue, "status", Catalogue.Ready)
        compare(p.catalogue.items, ["a", "atten", "b"])
        compare(p.tester.values("label"), ["Auto", "By hand"])
        p.catalogue.source = second
        compare(p.catalogue.sources, [second])
        tryCompare(p.catalogue, "status", Catalogue.Ready)
        compare(p.tester.values("label"), ["By hand"])
        p.catalogue.source = ""
        compare(p.catalogue.status, Catalogue.Null)
        compare(p.catalogue.sources, [])
        compare(p.catalogue.items, [])
        compare(p.choices.count, 0)
    }

    function test_reportsFailures_data() {
        return [
            { tag: "missing", error: ": No such file or directory" },
            { tag: "broken", text: "{\n\"a\": [],\n}\n", error: ":3: object is missing after a comma" },
            { tag: "empty", text: "", error: ": is empty (illegal value)" },
            { tag: "setups", text: '{"a": [{"id": "x", "label": "y"}]}',
              error: ": holds no choice of a catalogue: an object with id, label, enum and dispSeq in the list of an "
                     + "item" }
        ]
    }
    function test_reportsFailures(row) {
        const p = createTemporaryObject(page, test)
        const name = "bad " + row.tag + ".json"
        if ("text" in row) {
            folder.write(name, row.text)
        }
        p.catalogue.source = folder.url(name)
        tryCompare(p.catalogue, "status", Catalogue.Error)
        compare(p.catalogue.errorString, folder.path(name) + row.error)
        compare(p.errors.count, 1)
        // What is held stays until there is something better.
        const good = write(name, { atten: [test.auto] })
        p.catalogue.reload()
        tryCompare(p.catalogue, "status", Catalogue.Ready)
        compare(p.catalogue.errorString, "")
        folder.remove(name)
        p.catalogue.reload()
        tryCompare(p.catalogue, "status", Catalogue.Error)
        compare(p.tester.values("label"), ["Auto"])
        compare(p.catalogue.source, good)
    }

    function test_refusesRemoteFiles() {
        const p = createTemporaryObject(page, test)
        p.catalogue.source = "http://localhost/catalogue.json"
        tryCompare(p.catalogue, "status", Catalogue.Error)
        compare(p.catalogue.errorString, "http://localhost/catalogue.json: is not a local file")
    }

    function test_readsEveryName_data() {
        return [
            { tag: "資料/Каталог é.json" },
            { tag: "100 % #1?.json" },
            { tag: "Qt resource", source: "qrc:/catalogue.json" }
        ]
    }
    function test_readsEveryName(row) {
        const p = createTemporaryObject(page, test)
        p.choices.item = "attenuation"
        const source = row.source || write(row.tag, { attenuation: [test.auto, test.manual] })
        read(p, source)
        verify(p.choices.count >= 2)
    }

    function test_aNewSourceReplacesAReading() {
        const p = createTemporaryObject(page, test)
        const many = Array.from({ length: 20000 }, (_, i) => choice("id" + i, "old", i, 1))
        p.catalogue.source = write("many.json", { atten: many })
        p.catalogue.source = write("few.json", { atten: [test.auto] })
        tryCompare(p.catalogue, "status", Catalogue.Ready)
        wait(300)
        compare(p.tester.values("label"), ["Auto"])
        compare(p.statuses.count, 2)
        compare(p.counts.count, 1)
    }

    function test_objectsMayEndAtAnyTime() {
        const source = write("end.json", { atten: Array.from({ length: 5000 }, (_, i) => choice("id" + i, "", i, 1)) })
        for (let i = 0; i < 20; ++i) {
            const p = page.createObject(test)
            p.catalogue.source = source
            if (i % 2) {
                wait(i)
            }
            p.destroy()
            wait(0)
        }
        const model = createTemporaryObject(lone, test, { catalogue: createTemporaryObject(other, test) })
        read({ catalogue: model.catalogue }, source)
        tryCompare(model, "count", 5000)
        model.catalogue.destroy()
        tryCompare(model, "count", 0)
        compare(model.catalogue, null)
    }
    Component { id: lone; ChoiceModel { item: "atten" } }
    Component { id: other; Catalogue {} }
}
