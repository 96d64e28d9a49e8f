import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0

TestCase {
    name: "RfUnits"
    when: windowShown

    function test_lists() {
        compare(RfUnits.levelUnits, ["dBm", "dBV", "dBmV", "dBuV", "V", "W"])
        compare(RfUnits.fieldUnits, ["dBuV/m", "dBmV/m", "dBV/m", "V/m", "W/m^2", "dBm/m^2", "dBW/m^2", "A/m",
                                     "dBA/m", "W/cm^2"])
        compare(RfUnits.entryUnits, ["dBm", "dBV", "dBmV", "dBuV", "V", "mV", "µV", "nV", "pV", "W", "mW", "µW", "nW",
                                     "pW", "dBuV/m", "dBmV/m", "dBV/m", "V/m", "mV/m", "uV/m", "nV/m", "pV/m", "W/m^2",
                                     "mW/m^2", "uW/m^2", "nW/m^2", "pW/m^2", "dBm/m^2", "dBW/m^2", "A/m", "dBA/m",
                                     "w/cm^2"])
    }

    function test_unit_data() {
        return [
            { tag: "dBm", quantity: "level", isField: false },
            { tag: "µV", quantity: "voltage", isField: false },
            { tag: "yW", quantity: "power", isField: false },
            { tag: "dBV/m", quantity: "field strength level", isField: true },
            { tag: "uV/m", quantity: "field strength", isField: true },
            { tag: "dBm/m^2", quantity: "power density level", isField: true },
            { tag: "w/cm^2", quantity: "power density", isField: true },
            { tag: "dBA/m", quantity: "magnetic field level", isField: true },
            { tag: "A/m", quantity: "magnetic field", isField: true },
            { tag: "kW/cm^2", quantity: "power density", isField: true },
            { tag: "uA/m", quantity: "magnetic field", isField: true },
            { tag: "kdBm", quantity: "", isField: false },
            { tag: "dbm", quantity: "", isField: false },
            { tag: "", quantity: "", isField: false }
        ]
    }
    function test_unit(row) {
        compare(RfUnits.quantity(row.tag), row.quantity)
        compare(RfUnits.isField(row.tag), row.isField)
    }

    function test_frequencies_data() {
        return [
            { tag: "GHz", frequency: 2400, text: "2.400000000 GHz", width: "2.4GHz" },
            { tag: "1000 MHz", frequency: 1000, text: "1000.000000 MHz", width: "1000MHz" },
            { tag: "kHz", frequency: 0.03, text: "30.000 kHz", width: "30kHz" },
            { tag: "500 Hz", frequency: 0.0005, text: "500 Hz", width: "0.5kHz" },
            { tag: "negative", frequency: -2.5, text: "-2.500000 MHz", width: "-2.5e+06Hz" },
            { tag: "none", frequency: NaN, text: "--", width: "--" },
            { tag: "infinite", frequency: -Infinity, text: "--", width: "--" }
        ]
    }
    function test_frequencies(row) {
        compare(RfUnits.frequencyText(row.frequency), row.text)
        compare(RfUnits.widthText(row.frequency), row.width)
    }

    function test_angles_data() {
        return [
            { tag: "whole", angle: 12.5, text: "12° 30′ 0″" },
            { tag: "negative, cut", angle: -33.8688, text: "-33° 52′ 7″" },
            { tag: "almost 46", angle: 45.999999, text: "45° 59′ 59″" },
            { tag: "negative below one degree", angle: -0.5, text: "-0° 30′ 0″" },
            { tag: "none", angle: NaN, text: "--" }
        ]
    }
    function test_angles(row) {
        compare(RfUnits.angleText(row.angle), row.text)
    }
}
