import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0

TestCase {
    id: test
    name: "RangeHint"
    when: windowShown

    Component {
        id: hint
        RangeHint {}
    }

    function test_texts_data() {
        return [
            { tag: "as made", text: "" },
            { tag: "without type", min: -5, max: 10.5, text: "{Min: -5.00 , Max: 10.50 }" },
            { tag: "Frequency", type: RangeHint.Frequency, min: 0.009, max: 6000,
              text: "{Min: 9.000 kHz, Max: 6.000000000 GHz}" },
            { tag: "Db", type: RangeHint.Db, min: -5, max: 10, integer: true, text: "{Min: -5 dB, Max: 10 dB}" },
            { tag: "Dbm", type: RangeHint.Dbm, min: -10, max: 20, text: "{Min: -10.00 dBm, Max: 20.00 dBm}" },
            { tag: "Dbm, integer", type: RangeHint.Dbm, min: -10.9, max: 20.9, integer: true,
              text: "{Min: -10 , Max: 20 }" },
            { tag: "Plain", type: RangeHint.Plain, min: 1, max: 2, integer: true, text: "{Min: 1 , Max: 2 }" },
            { tag: "Microseconds", type: RangeHint.Microseconds, min: 1, max: 2,
              text: "{Min: 1.00 µs, Max: 2.00 µs}" },
            { tag: "Seconds", type: RangeHint.Seconds, min: 0, max: 100, integer: true,
              text: "{Min: 0 Sec, Max: 100 Sec}" },
            { tag: "Seconds with decimals", type: RangeHint.Seconds, min: 0, max: 100,
              text: "{Min: 0.00 , Max: 100.00 }" },
            { tag: "Nanoseconds", type: RangeHint.Nanoseconds, min: 1, max: 2, text: "{Min: 1.00 ns, Max: 2.00 ns}" },
            { tag: "Percent", type: RangeHint.Percent, min: 0, max: 100, text: "{Min: 0.00 %, Max: 100.00 %}" },
            { tag: "Dbi", type: RangeHint.Dbi, min: 0, max: 3, text: "{Min: 0.00 dBi, Max: 3.00 dBi}" },
            { tag: "Dbv", type: RangeHint.Dbv, min: -10, max: 13.0103, text: "{Min: -23.0 dBV, Max: 0.0 dBV}" },
            { tag: "Dbmv", type: RangeHint.Dbmv, min: -47, max: 0, text: "{Min: -0.0 dBmV, Max: 47.0 dBmV}" },
            { tag: "Dbuv", type: RangeHint.Dbuv, min: -30, max: 0, text: "{Min: 77.0 dBuV, Max: 107.0 dBuV}" },
            { tag: "Volt", type: RangeHint.Volt, min: -50, max: 30, text: "{Min: 0.71 mV, Max: 7.07 V}" },
            { tag: "Watt", type: RangeHint.Watt, min: -60, max: 30, text: "{Min: 1.00 nW, Max: 1.00 W}" },
            { tag: "DbuvPerMeter", type: RangeHint.DbuvPerMeter, min: -30, max: -10, frequency: 100,
              text: "{Min: 87.20 dBuV/m, Max: 107.20 dBuV/m}" },
            { tag: "DbmvPerMeter", type: RangeHint.DbmvPerMeter, min: -30, max: -10, frequency: 100,
              text: "{Min: 27.20 dBmV/m, Max: 47.20 dBmV/m}" },
            { tag: "DbvPerMeter", type: RangeHint.DbvPerMeter, min: -30, max: -10, frequency: 100, gain: 2,
              text: "{Min: -34.80 dBV/m, Max: -14.80 dBV/m}" },
            { tag: "VoltPerMeter", type: RangeHint.VoltPerMeter, min: -50, max: -30, frequency: 100,
              text: "{Min: 2.29 mV/m, Max: 0.02 V/m}" },
            // 10^((-30 - 13 + 10.2) / 10) / (120 pi) = 1.392e-6
            { tag: "WattPerSquareMeter", type: RangeHint.WattPerSquareMeter, min: -30, max: 0, frequency: 100,
              text: "{Min: 1.39 uW/m^2, Max: 1.39 mW/m^2}" },
            // that in dBm: 10 lg(1.392e-3)
            { tag: "DbmPerSquareMeter", type: RangeHint.DbmPerSquareMeter, min: -30, max: 0, frequency: 100,
              text: "{Min: -28.56 dBm/m^2, Max: 1.44 dBm/m^2}" },
            { tag: "Ppm", type: RangeHint.Ppm, min: -1, max: 1, text: "{Min: -1.00 ppm, Max: 1.00 ppm}" },
            { tag: "Empty", type: RangeHint.Empty, min: 1, max: 2, text: "" },
            { tag: "no lower limit", type: RangeHint.Db, max: 2, text: "" },
            { tag: "no upper limit", type: RangeHint.Db, min: 2, integer: true, text: "" },
            { tag: "a field without frequency", type: RangeHint.VoltPerMeter, min: 1, max: 2, text: "" },
            { tag: "a field at 0 MHz", type: RangeHint.DbuvPerMeter, min: 1, max: 2, frequency: 0, text: "" },
            { tag: "beyond 32 bits", type: RangeHint.Plain, min: -1e12, max: 1e12, integer: true,
              text: "{Min: -2147483648 , Max: 2147483647 }" }
        ]
    }
    function test_texts(row) {
        const properties = Object.assign({}, row)
        delete properties.tag
        delete properties.text
        compare(createTemporaryObject(hint, test, properties).text, row.text)
    }

    SignalSpy {
        id: changes
        signalName: "textChanged"
    }

    function test_onlyChangesAreReported_data() {
        return [
            { tag: "type", other: RangeHint.Percent, signals: 1 },
            { tag: "min", other: -11, signals: 1 },
            { tag: "max", other: NaN, signals: 1 },
            { tag: "max", other: 20.001, signals: 0 },
            { tag: "integer", other: true, signals: 1 },
            { tag: "frequency", other: 100, signals: 0 },
            { tag: "gain", other: 3, signals: 0 }
        ]
    }
    function test_onlyChangesAreReported(row) {
        const range = createTemporaryObject(hint, test, { type: RangeHint.Dbm, min: -10, max: 20 })
        changes.target = range
        changes.clear()
        let count = 0
        range[row.tag + "Changed"].connect(() => ++count)
        range[row.tag] = range[row.tag]
        compare(count, 0)
        range[row.tag] = row.other
        range[row.tag] = row.other
        compare(count, 1)
        compare(changes.count, row.signals)
    }
}
