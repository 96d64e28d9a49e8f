import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0

TestCase {
    id: test
    name: "LevelEntry"
    when: windowShown

    Component {
        id: entry
        LevelEntry {}
    }

    function test_levels_data() {
        return [
            { tag: "-30", level: -30 },
            { tag: " -30.25dBm ", level: -30.25 },
            { tag: "77", unit: "dBuV", level: -29.989 },  // 77 - 106.9897, cut
            { tag: "207", unit: "dBuV", level: 100 },
            { tag: "500 mV", unit: "dBm", level: 6.989 },  // 20 lg 500 - 46.9897, cut
            { tag: "1 V", level: 13.01 },
            { tag: "7 uV", level: -90.087 },  // 20 lg 0.007 - 46.9897, cut
            { tag: "7 µV", level: -90.087 },
            { tag: "7\u03BCV", level: -90.087 },
            { tag: "2e-3", unit: "W", level: 3.01 },
            { tag: "1 mW", unit: "dBuV/m", level: 0 },
            { tag: "87.2 dBuV/m", frequency: 100, level: -30 },
            { tag: "87.2", unit: "dBuV/m", frequency: 100, gain: 2, level: -28 },
            { tag: "5", unit: "W/cm^2", frequency: 100, level: 75.5530112  /* 10 lg(5 * 3769911.18) + 42.8 - 40 */ }
        ]
    }
    function test_levels(row) {
        const level = createTemporaryObject(entry, test, {
            text: row.tag, unit: row.unit || "dBm", frequency: row.frequency || NaN, gain: row.gain || 0
        })
        fuzzyCompare(level.level, row.level, 1e-6)
        compare(level.acceptable, true)
        compare(level.hint, "")
    }

    function test_refusals_data() {
        return [
            { tag: "empty", text: "", hint: "" },
            { tag: "blank", text: "  ", hint: "" },
            { tag: "no number", text: "abc", hint: '"abc" is not a number with or without a unit' },
            { tag: "not yet a number", text: "-", hint: '"-" is not a number with or without a unit' },
            { tag: "comma", text: "1,5",
              hint: '"1,5" is not understood: numbers have a decimal point, no comma' },
            { tag: "related unit", text: "5 kV", hint: 'there is no unit "kV"; use V: 1 kV = 1000 V' },
            { tag: "unknown unit", text: "5 dbmv",
              hint: 'there is no unit "dbmv"; the nearest are dBmV, dBm or dBuV' },
            { tag: "unknown unit of a bare number", text: "5", unit: "kV",
              hint: 'there is no unit "kV"; use V: 1 kV = 1000 V' },
            { tag: "only shown", text: "5 fW", hint: '"fW" is only shown, never read; values are read in W, mW, '
                                                     + "µW, nW or pW" },
            { tag: "nothing", text: "0 V", hint: "0 V has no level, it is not above zero" },
            { tag: "negative", text: "-2", unit: "W", hint: "-2 W has no level, it is not above zero" },
            { tag: "a field without frequency", text: "3 V/m", hint: "V/m needs the centre frequency of the antenna" },
            { tag: "a field at 0 MHz", text: "3", unit: "dBuV/m", frequency: 0,
              hint: "dBuV/m needs the centre frequency of the antenna" },
            { tag: "no field left", text: "1e-320 pV/m", frequency: 100,
              hint: '"1e-320 pV/m" has no level, it is too small' }
        ]
    }
    function test_refusals(row) {
        const level = createTemporaryObject(entry, test, {
            text: row.text, unit: row.unit || "dBm", frequency: "frequency" in row ? row.frequency : NaN
        })
        compare(level.hint, row.hint)
        compare(level.acceptable, false)
        compare(level.level, NaN)
    }

    function test_limits_data() {
        return [
            { tag: "at the lower limit", text: "-30", min: -30, level: -30 },
            { tag: "below it", text: "-30.1", min: -30, level: -30.1, hint: "is below -30.0 dBm" },
            { tag: "at the upper limit", text: "20", max: 20, level: 20 },
            { tag: "above it", text: "20.1", max: 20, level: 20.1, hint: "is above 20.0 dBm" },
            { tag: "in the unit chosen", text: "0.3 dBm", unit: "dBuV", max: 0, level: 0.3,
              hint: "is above 107.0 dBuV" },
            { tag: "as it is shown", text: "107", unit: "dBuV", max: 0, level: 0 },
            { tag: "a little more", text: "107.1", unit: "dBuV", max: 0, level: 0.11, hint: "is above 107.0 dBuV" },
            // 0.7071 V
            { tag: "volts as shown", text: "0.71", unit: "V", max: 10, level: 10 },
            { tag: "the lower limit as shown", text: "0.71 mV", unit: "V", min: -49.95, level: -49.95 },
            { tag: "a prefix that the instrument leaves out", text: "300", unit: "V", max: 60, level: 62.552,
              hint: "is above 0.22 kV" },
            { tag: "a field", text: "107.3", unit: "dBuV/m", frequency: 100, max: -10, level: -9.9,
              hint: "is above 107.20 dBuV/m" },
            { tag: "a field without frequency", text: "1 dBm", unit: "dBuV/m", max: 0, level: 1,
              hint: "is above 0.0 dBm" },
            { tag: "a unit unknown", text: "1 dBm", unit: "", max: 0, level: 1, hint: "is above 0.0 dBm" }
        ]
    }
    function test_limits(row) {
        const level = createTemporaryObject(entry, test, {
            text: row.text, unit: "unit" in row ? row.unit : "dBm", frequency: row.frequency || NaN,
            min: "min" in row ? row.min : NaN, max: "max" in row ? row.max : NaN
        })
        fuzzyCompare(level.level, row.level, 1e-9)
        compare(level.acceptable, !("hint" in row))
        compare(level.hint, row.hint || "")
    }

    Component {
        id: field
        TextInput {
            id: input
            property LevelEntry entry: LevelEntry { text: input.text; max: 20 }
            validator: entry
        }
    }

    function test_validatesATextField() {
        const input = createTemporaryObject(field, test)
        input.text = "500 mV"
        compare(input.acceptableInput, true)
        fuzzyCompare(input.entry.level, 6.989, 1e-9)
        input.text = "5 V"
        compare(input.text, "5 V")
        compare(input.acceptableInput, false)
        input.entry.max = 30
        compare(input.acceptableInput, true)
        input.entry.unit = "dBuV"
        input.text = "-"
        compare(input.acceptableInput, false)
    }

    function test_onlyChangesAreReported_data() {
        return [
            { tag: "text", other: "-30.0", changes: [] },
            { tag: "text", other: "-20", changes: ["level"] },
            { tag: "text", other: "x", changes: ["acceptable", "hint", "level"] },
            { tag: "unit", other: "dBuV", changes: ["level"] },
            { tag: "frequency", other: 100, changes: [] },
            { tag: "gain", other: 3, changes: [] },
            { tag: "min", other: -40, changes: [] },
            { tag: "min", other: -29, changes: ["acceptable", "hint"] },
            { tag: "max", other: -31, changes: ["acceptable", "hint"] }
        ]
    }
    function test_onlyChangesAreReported(row) {
        const level = createTemporaryObject(entry, test, { text: "-30" })
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
