import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0

TestCase {
    id: test
    name: "LevelText"
    when: windowShown

    Component {
        id: text
        LevelText {}
    }

    function test_texts_data() {
        return [
            { tag: "dBm", level: -12.34, text: "-12.3 dBm" },
            { tag: "0 dBm is 106.9897 dBuV", level: 0, unit: "dBuV", text: "107.0 dBuV" },
            { tag: "millivolts", level: -50, unit: "V", text: "0.71 mV" },
            { tag: "microvolts, U+00B5", level: -107, unit: "V", text: "1.00 µV" },
            { tag: "volts", level: 30, unit: "V", text: "7.07 V" },
            { tag: "kilovolts", level: 63, unit: "V", text: "0.32 V", prefixLeftOut: "k" },
            { tag: "nanowatts", level: -60, unit: "W", text: "1.00 nW" },
            { tag: "kilowatts", level: 65, unit: "W", text: "3.16 W", prefixLeftOut: "k" },
            { tag: "megawatts", level: 95, unit: "W", text: "3.16 W", prefixLeftOut: "M" },
            { tag: "field strength level", level: -30, unit: "dBuV/m", frequency: 100, text: "87.20 dBuV/m" },
            { tag: "antenna gain", level: -30, unit: "dBuV/m", frequency: 100, gain: 2.5, text: "84.70 dBuV/m" },
            { tag: "field strength", level: -30, unit: "V/m", frequency: 100, text: "0.02 V/m" },
            { tag: "with a prefix", level: -50, unit: "V/m", frequency: 100, text: "2.29 mV/m" },
            { tag: "as made", text: "--" },
            { tag: "infinite", level: -Infinity, text: "--" },
            { tag: "no such unit", level: 0, unit: "dbm", text: "--" },
            { tag: "the prefix follows from the level", level: 0, unit: "mV", text: "--" },
            { tag: "a spelling for reading", level: 0, unit: "w/cm^2", frequency: 100, text: "--" },
            { tag: "a field without frequency", level: 0, unit: "V/m", text: "--" },
            { tag: "a field at 0 MHz", level: 0, unit: "dBuV/m", frequency: 0, text: "--" },
            { tag: "a field below the last prefix", level: -280, unit: "W/m^2", frequency: 100, text: "--" },
            { tag: "a field that is 0 in single precision", level: -1000, unit: "V/m", frequency: 100, text: "--" }
        ]
    }
    function test_texts(row) {
        const properties = Object.assign({}, row)
        delete properties.tag
        delete properties.text
        delete properties.prefixLeftOut
        const level = createTemporaryObject(text, test, properties)
        compare(level.text, row.text)
        compare(level.valid, row.text !== "--")
        compare(level.number, row.text.split(" ")[0])
        compare(level.shownUnit, row.text.split(" ")[1] || "")
        compare(level.prefixLeftOut, row.prefixLeftOut || "")
        compare(level.kilo, "prefixLeftOut" in row)
        level.showUnit = false
        compare(level.text, level.number)
    }

    function test_unitStaysAsChosen_data() {
        return [{ tag: "V" }, { tag: "W" }, { tag: "V/m" }, { tag: "dBuV" }]
    }
    function test_unitStaysAsChosen(row) {
        const level = createTemporaryObject(text, test, { unit: row.tag, frequency: 100 })
        let changes = 0
        level.unitChanged.connect(() => ++changes)
        const shown = new Set()
        for (level.level = -150; level.level < 100; level.level += 5) {
            compare(level.unit, row.tag)
            verify(level.valid)
            shown.add(level.shownUnit)
        }
        compare(changes, 0)
        compare(shown.size > 3, row.tag !== "dBuV")
    }

    function test_onlyChangesAreReported_data() {
        // From 0.22 V of 0 dBm.
        return [
            { tag: "level", other: 0.0001, changes: [] },
            { tag: "level", other: 10, changes: ["number", "text"] },
            { tag: "level", other: -50, changes: ["number", "shownUnit", "text"] },
            { tag: "level", other: 60, changes: ["kilo", "prefixLeftOut"] },  // 0.22 kV
            { tag: "level", other: NaN, changes: ["number", "shownUnit", "text", "valid"] },
            { tag: "unit", other: "dBm", changes: ["number", "shownUnit", "text"] },
            { tag: "showUnit", other: false, changes: ["text"] },
            { tag: "frequency", other: 50, changes: [] },
            { tag: "gain", other: 3, changes: [] }
        ]
    }
    function test_onlyChangesAreReported(row) {
        const level = createTemporaryObject(text, test, { unit: "V", level: 0 })
        const changes = []
        for (const name of Object.keys(level)) {
            if (name.endsWith("Changed") && name !== "objectNameChanged") {
                level[name].connect(() => changes.push(name.slice(0, -7)))
            }
        }
        level[row.tag] = level[row.tag]
        compare(changes, [])
        level[row.tag] = row.other
        level[row.tag] = row.other
        const expected = row.changes.concat(row.tag)
        compare(changes.sort(), expected.sort())
    }
}
