import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0

// What views of spectra do with the pointer, fingers and keys, and the frequencies that they share.
TestCase {
    id: test
    name: "SpectrumInput"
    when: windowShown
    width: 400
    height: 300
    visible: true

    // 100 points of 0.2 MHz, 200 pixels wide from x = 50 on.
    TraceModel { id: sweeps; startFrequency: 88; stopFrequency: 108; updateInterval: 0 }
    Component {
        id: page
        Item {
            property ListModel rows: ListModel { id: rows }
            property TraceView view: view
            property FrequencyZoom zoom: view.zoom
            property SignalSpy lows: SignalSpy { target: view.zoom; signalName: "lowChanged" }
            property SignalSpy highs: SignalSpy { target: view.zoom; signalName: "highChanged" }
            property SignalSpy clicks: SignalSpy { target: view; signalName: "clicked" }
            property SignalSpy cursors: SignalSpy { target: view; signalName: "cursorFrequencyChanged" }
            TraceView {
                id: view
                trace: sweeps
                width: 260
                height: 200
                leftMargin: 50
                rightMargin: 10
                topMargin: 10
                bottomMargin: 30
            }
        }
    }
    Component { id: otherView; TraceView { width: 260; height: 200; leftMargin: 50; rightMargin: 10 } }

    function levels(count) {
        return Array.from({ length: count }, () => -90)
    }
    function made() {
        verify(sweeps.append(levels(100)))
        const p = createTemporaryObject(page, test)
        compareShown(p.zoom, 88, 108)
        return p
    }
    function compareShown(zoom, low, high) {
        fuzzyCompare(zoom.low, low, 1e-9)
        fuzzyCompare(zoom.high, high, 1e-9)
    }

    function test_placesAndFrequencies() {
        const p = made()
        compare(p.view.xOf(88), 50)
        compare(p.view.xOf(98), 150)
        compare(p.view.xOf(110), 270)
        compare(p.view.frequencyAt(50), 88)
        compare(p.view.frequencyAt(150), 98)
        compare(p.view.frequencyAt(250), 108)
        compare(p.view.frequencyAt(49), NaN)
        compare(p.view.frequencyAt(251), NaN)
        p.zoom.show(98, 100)
        compare(p.view.frequencyAt(150), 99)
        p.view.leftMargin = 100
        compare(p.view.xOf(98), 100)
        p.view.width = 100
        compare(p.view.xOf(98), NaN)
        compare(p.view.frequencyAt(20), NaN)
        compare(createTemporaryObject(otherView, test).xOf(98), NaN)
    }

    function test_wheel_data() {
        return [
            { tag: "one step", x: 150, y: 120, low: 98 - 8, high: 98 + 8 },
            { tag: "what is under the pointer stays", x: 50, y: 120, low: 88, high: 104 },
            { tag: "three steps", x: 250, y: 360, low: 108 - 20 * Math.pow(0.8, 3), high: 108 },
            { tag: "with Ctrl", x: 250, y: 120, keys: Qt.ControlModifier, low: 108 - 20 * Math.pow(0.8, 3), high: 108 },
            { tag: "a quarter of a step", x: 50, y: 30, low: 88, high: 88 + 20 * Math.pow(0.8, 0.25) },
            { tag: "never beyond the whole", x: 150, y: -120, low: 88, high: 108 },
            { tag: "five points remain", x: 150, y: 12000, low: 97.5, high: 98.5 },
            { tag: "without end", x: 150, y: 2147483647, low: 88, high: 108 },
            { tag: "beside the plot", x: 5, y: 120, low: 88, high: 104 }
        ]
    }
    function test_wheel(row) {
        const p = made()
        mouseWheel(p.view, row.x, 50, 0, row.y, Qt.NoButton, row.keys || Qt.NoModifier)
        compareShown(p.zoom, row.low, row.high)
        compare(p.zoom.zoomed, row.high - row.low < 20)
        compare(p.lows.count, row.low === 88 ? 0 : 1)
        compare(p.highs.count, row.high === 108 ? 0 : 1)
    }

    function test_smallStepsAddUp() {
        const p = made()
        for (let i = 0; i < 40; ++i) {
            mouseWheel(p.view, 150, 50, 0, 3)
        }
        compareShown(p.zoom, 90, 106)
        for (let i = 0; i < 60; ++i) {
            mouseWheel(p.view, 150, 50, 0, -3)
        }
        compareShown(p.zoom, 88, 108)
        verify(!p.zoom.zoomed)
    }

    function test_wheelSideways_data() {
        return [
            { tag: "right", x: -120, y: 0, low: 95, high: 105 },
            { tag: "left", x: 120, y: 0, low: 93, high: 103 },
            { tag: "with Shift", x: 0, y: -120, keys: Qt.ShiftModifier, low: 95, high: 105 },
            { tag: "not beyond the end", x: -12000, y: 0, low: 98, high: 108 }
        ]
    }
    function test_wheelSideways(row) {
        const p = made()
        p.zoom.show(94, 104)
        mouseWheel(p.view, 150, 50, row.x, row.y, Qt.NoButton, row.keys || Qt.NoModifier)
        compareShown(p.zoom, row.low, row.high)
    }

    function test_drag_data() {
        return [
            { tag: "to the right shows lower frequencies", dx: 40, low: 92, high: 102 },
            { tag: "to the left", dx: -20, low: 95, high: 105 },
            { tag: "not beyond the low end", dx: 180, low: 88, high: 98 },
            { tag: "not beyond the high end", dx: -190, low: 98, high: 108 }
        ]
    }
    function test_drag(row) {
        const p = made()
        p.zoom.show(94, 104)
        mousePress(p.view, 150, 50)
        mouseMove(p.view, 150 + row.dx / 2, 50)
        mouseMove(p.view, 150 + row.dx, 50)
        compareShown(p.zoom, row.low, row.high)
        mouseRelease(p.view, 150 + row.dx, 50)
        compareShown(p.zoom, row.low, row.high)
        compare(p.clicks.count, 0)
        mouseMove(p.view, 100, 50)
        compareShown(p.zoom, row.low, row.high)
    }

    function test_click() {
        const p = made()
        mouseClick(p.view, 100, 50)
        compare(p.clicks.count, 1)
        compare(p.clicks.signalArguments[0][0], 93)
        verify(p.view.activeFocus)
        // A hand that trembles
        mousePress(p.view, 100, 50)
        mouseMove(p.view, 102, 51)
        mouseRelease(p.view, 102, 51)
        compare(p.clicks.count, 2)
        wait(600)
        mouseClick(p.view, 20, 50)
        wait(600)
        mouseClick(p.view, 100, 190)
        compare(p.clicks.count, 2)
        mouseClick(p.view, 100, 50, Qt.RightButton)
        compare(p.clicks.count, 2)
        verify(!p.zoom.zoomed)
    }

    function test_doubleClick() {
        const p = made()
        p.zoom.show(94, 104)
        mouseDoubleClickSequence(p.view, 100, 50)
        compareShown(p.zoom, 88, 108)
        compare(p.clicks.count, 1)
    }

    function test_keys_data() {
        return [
            { tag: "Right", key: Qt.Key_Right, low: 95, high: 105 },
            { tag: "Left", key: Qt.Key_Left, low: 93, high: 103 },
            { tag: "Ctrl and Right", key: Qt.Key_Right, keys: Qt.ControlModifier, low: 97, high: 107 },
            { tag: "Up", key: Qt.Key_Up, low: 95, high: 103 },
            { tag: "Plus", key: Qt.Key_Plus, low: 95, high: 103 },
            { tag: "Down", key: Qt.Key_Down, low: 92.75, high: 105.25 },
            { tag: "Minus", key: Qt.Key_Minus, low: 92.75, high: 105.25 },
            { tag: "at the cursor", key: Qt.Key_Up, cursor: 94, low: 94, high: 102 },
            { tag: "the cursor elsewhere", key: Qt.Key_Up, cursor: 90, low: 95, high: 103 },
            { tag: "Home", key: Qt.Key_Home, low: 88, high: 108 },
            { tag: "any other", key: Qt.Key_A, low: 94, high: 104, passed: true }
        ]
    }
    function test_keys(row) {
        const p = made()
        p.zoom.show(94, 104)
        p.zoom.cursor = row.cursor || NaN
        p.view.forceActiveFocus()
        const passed = []
        p.Keys.pressed.connect(event => { if (event.text !== "") { passed.push(event.key) } })
        keyClick(row.key, row.keys || Qt.NoModifier)
        compareShown(p.zoom, row.low, row.high)
        compare(passed, row.passed ? [row.key] : [])
    }

    function test_pinch_data() {
        return [
            { tag: "twice as far apart", from: [100, 200], to: [50, 250], low: 96.5, high: 101.5 },
            { tag: "moved", from: [100, 200], to: [120, 220], low: 93, high: 103 },
            { tag: "moved and spread", from: [100, 150], to: [100, 200], low: 95.25, high: 100.25 },
            { tag: "half as far apart", from: [50, 250], to: [100, 200], low: 88, high: 108 }
        ]
    }
    function test_pinch(row) {
        const p = made()
        p.zoom.show(94, 104)
        const touch = touchEvent(p.view)
        touch.press(0, p.view, row.from[0], 60).press(1, p.view, row.from[1], 60).commit()
        touch.move(0, p.view, row.to[0], 60).move(1, p.view, row.to[1], 60).commit()
        touch.release(0, p.view, row.to[0], 60).release(1, p.view, row.to[1], 60).commit()
        compareShown(p.zoom, row.low, row.high)
        compare(p.clicks.count, 0)
    }

    function test_aFingerDragsAfterAPinch() {
        const p = made()
        p.zoom.show(94, 104)
        const touch = touchEvent(p.view)
        touch.press(0, p.view, 100, 60).commit()
        touch.stationary(0).press(1, p.view, 200, 60).commit()
        touch.move(0, p.view, 50, 60).move(1, p.view, 250, 60).commit()
        touch.stationary(0).release(1, p.view, 250, 60).commit()
        touch.move(0, p.view, 60, 60).commit()
        touch.move(0, p.view, 90, 60).commit()
        touch.release(0, p.view, 90, 60).commit()
        compareShown(p.zoom, 95.5, 100.5)
        compare(p.clicks.count, 0)
    }

    function test_fingersDragAndTap() {
        const p = made()
        p.zoom.show(94, 104)
        const touch = touchEvent(p.view)
        touch.press(0, p.view, 150, 60).commit()
        touch.move(0, p.view, 170, 60).commit()
        touch.move(0, p.view, 190, 60).commit()
        touch.release(0, p.view, 190, 60).commit()
        compareShown(p.zoom, 92, 102)
        compare(p.clicks.count, 0)
        touch.press(0, p.view, 150, 60).commit()
        touch.release(0, p.view, 150, 60).commit()
        compare(p.clicks.count, 1)
        compareShown(p.zoom, 92, 102)
        compare(p.view.cursorFrequency, 97)
        touch.press(0, p.view, 152, 62).commit()
        touch.release(0, p.view, 152, 62).commit()
        compareShown(p.zoom, 88, 108)
    }

    function test_cursor() {
        const p = made()
        compare(p.view.cursorFrequency, NaN)
        mouseMove(p.view, 100, 50)
        compare(p.view.cursorFrequency, 93)
        compare(p.cursors.count, 1)
        mouseMove(p.view, 100, 60)
        compare(p.cursors.count, 1)
        mouseMove(p.view, 20, 60)
        compare(p.view.cursorFrequency, NaN)
        mouseMove(p.view, 250, 60)
        compare(p.view.cursorFrequency, 108)
        mouseMove(test, 399, 299)
        compare(p.view.cursorFrequency, NaN)
        p.view.cursorFrequency = 90
        compare(p.zoom.cursor, 90)
    }

    function test_notInteractive() {
        const p = made()
        p.zoom.show(94, 104)
        p.view.interactive = false
        p.view.forceActiveFocus()
        mouseWheel(p.view, 150, 50, 0, 120)
        mouseDrag(p.view, 150, 50, 40, 0)
        mouseDoubleClickSequence(p.view, 100, 50)
        keyClick(Qt.Key_Home)
        const touch = touchEvent(p.view)
        touch.press(0, p.view, 100, 60).press(1, p.view, 200, 60).commit()
        touch.move(0, p.view, 50, 60).move(1, p.view, 250, 60).commit()
        touch.release(0, p.view, 50, 60).release(1, p.view, 250, 60).commit()
        compareShown(p.zoom, 94, 104)
        compare(p.clicks.count, 0)
        compare(p.view.cursorFrequency, NaN)
    }

    function test_dragsMarkers() {
        const p = made()
        p.rows.append({ frequency: 93, level: -90 })
        p.rows.append({ frequency: 95, level: -90 })
        p.view.markers = p.rows
        p.zoom.show(90, 100)
        mousePress(p.view, 152, 50)
        mouseMove(p.view, 170, 50)
        mouseMove(p.view, 190, 50)
        compare(p.rows.get(1).frequency, 97)
        mouseMove(p.view, 400, 50)
        mouseRelease(p.view, 400, 50)
        compare(p.rows.get(1).frequency, 100)
        compare(p.rows.get(0).frequency, 93)
        compareShown(p.zoom, 90, 100)
        compare(p.clicks.count, 0)
    }

    function test_withoutPoints() {
        const view = createTemporaryObject(otherView, test)
        compare(view.zoom.low, NaN)
        compare(view.zoom.wholeHigh, NaN)
        verify(!view.zoom.zoomed)
        mouseWheel(view, 150, 50, 0, 120)
        mouseDrag(view, 150, 50, 40, 0)
        mouseMove(view, 150, 50)
        keyClick(Qt.Key_Left)
        view.zoom.zoom(2)
        view.zoom.pan(1)
        compare(view.zoom.low, NaN)
        compare(view.cursorFrequency, NaN)
    }
}
