import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "MapView"
    when: windowShown
    width: 400
    height: 300
    visible: true

    TestFolder { id: folder }
    ItemPicture { id: picture }

    // 8 x 6 cells of 10 m with the values 0 to 47, row after row; cell 2,1 was not measured. Each value up to 23 is
    // blue, each other green.
    readonly property url source: {
        const cells = Array.from({ length: 48 }, (_, i) => i === 10 ? -1 : i)
        folder.write("map.clr", "0 0 0 255\n23 0 0 255\n24 0 255 0\n99 0 255 0\n")
        return folder.write("map.asc", "ncols 8\nnrows 6\nxllcorner 1000\nyllcorner 2000\ncellsize 10\nNODATA_value -1\n"
                            + [0, 1, 2, 3, 4, 5].map(row => cells.slice(8 * row, 8 * row + 8).join(" ")).join("\n") + "\n")
    }
    readonly property string blue: "#0000ff"
    readonly property string green: "#00ff00"
    readonly property string behind: "#ff00ff"
    readonly property string markRed: "#aa0000"

    RasterMap { id: terrain; source: test.source }
    Component {
        id: page
        Rectangle {
            id: top
            property MapView view: view
            property var changes: ({})
            function count(name) {
                top.changes[name] = (top.changes[name] || 0) + 1
            }
            // 20 pixels for a cell, the map from x = 20 to 180.
            width: 200
            height: 120
            color: test.behind
            MapView {
                id: view
                anchors.fill: parent
                map: terrain
                markColor: test.markRed
                labelColor: "white"
                onMapChanged: top.count("map")
                onPixelsPerCellChanged: top.count("pixelsPerCell")
                onCenterXChanged: top.count("centerX")
                onCenterYChanged: top.count("centerY")
                onFittedChanged: top.count("fitted")
                onCursorXChanged: top.count("cursorX")
                onCursorYChanged: top.count("cursorY")
                onCursorValueChanged: top.count("cursorValue")
                onMarksChanged: top.count("marks")
            }
            SignalSpy { id: clicks; target: view; signalName: "clicked" }
            property alias clicks: clicks
        }
    }
    Component { id: lone; MapView { width: 100; height: 100 } }
    Component { id: other; RasterMap { source: test.source } }
    Component { id: rows; ListModel {} }

    function initTestCase() {
        tryCompare(terrain, "status", RasterMap.Ready)
    }
    function made(properties) {
        const p = createTemporaryObject(page, test)
        Object.assign(p.view, properties || {})
        p.changes = {}
        return p
    }
    function take(item) {
        picture.take(item)
        tryCompare(picture, "width", item.width)
        compare(picture.height, item.height)
    }
    function compareSight(view, pixelsPerCell, x, y) {
        fuzzyCompare(view.pixelsPerCell, pixelsPerCell, 1e-6)
        fuzzyCompare(view.centerX, x, 1e-6)
        fuzzyCompare(view.centerY, y, 1e-6)
    }

    function test_showsTheWholeMapAtFirst() {
        const p = made()
        compareSight(p.view, 20, 1040, 2030)
        compare(p.view.fitted, true)
        compare(p.view.pixelOf(1000, 2060), Qt.point(20, 0))
        compare(p.view.pixelOf(1080, 2000), Qt.point(180, 120))
        compare(p.view.coordinatesAt(30, 10), Qt.point(1005, 2055))
        compare(p.view.coordinatesAt(19, 10), Qt.point(NaN, NaN))
        take(p)
        for (let row = 0; row < 6; ++row) {
            for (let column = 0; column < 8; ++column) {
                const color = column === 2 && row === 1 ? test.behind : row < 3 ? test.blue : test.green
                // Sharp from the first pixel of a cell to its last.
                compare(picture.at(20 + 20 * column, 20 * row), color, column + "," + row)
                compare(picture.at(39 + 20 * column, 20 * row + 19), color, column + "," + row)
            }
        }
        compare(picture.at(19, 60), test.behind)
        compare(picture.at(180, 60), test.behind)
        compare(picture.count(test.behind), 200 * 120 - 47 * 400)
        p.view.visible = false
        take(p)
        compare(picture.count(test.behind), 200 * 120)
    }

    function test_isEmptyWithoutMap() {
        const view = createTemporaryObject(lone, test)
        compare(view.pixelsPerCell, NaN)
        compare(view.centerX, NaN)
        compare(view.coordinatesAt(1, 1), Qt.point(NaN, NaN))
        compare(view.pixelOf(1, 1), Qt.point(NaN, NaN))
        view.fit()
        view.zoom(2, 10, 10)
        mouseMove(view, 10, 10)
        mouseClick(view, 10, 10)
        mouseWheel(view, 10, 10, 0, 120)
        keyClick(Qt.Key_Plus)
        compare(view.cursorX, NaN)
        compare(view.pixelsPerCell, NaN)
    }

    function test_goesToAPlace_data() {
        return [
            { tag: "zoomed", set: { pixelsPerCell: 40 }, scale: 40, x: 1040, y: 2030, changes: { pixelsPerCell: 1, fitted: 1 } },
            { tag: "to a corner", set: { pixelsPerCell: 40, centerX: 0, centerY: 9999 }, scale: 40, x: 1025, y: 2045,
              changes: { pixelsPerCell: 1, fitted: 1, centerX: 1, centerY: 1 } },
            { tag: "place first", set: { centerX: 1050, centerY: 2030, pixelsPerCell: 40 }, scale: 40, x: 1050, y: 2030,
              changes: { pixelsPerCell: 1, fitted: 1, centerX: 1 } },
            { tag: "never smaller than whole", set: { pixelsPerCell: 5 }, scale: 20, x: 1040, y: 2030, changes: {} },
            { tag: "never beyond", set: { pixelsPerCell: 1000 }, scale: 64, x: 1040, y: 2030,
              changes: { pixelsPerCell: 1, fitted: 1 } },
            { tag: "NaN", set: { pixelsPerCell: NaN, centerX: NaN, centerY: NaN }, scale: 20, x: 1040, y: 2030, changes: {} },
            { tag: "infinite", set: { pixelsPerCell: Infinity, centerX: -Infinity, centerY: Infinity }, scale: 64,
              x: 1000 + 1000 / 64, y: 2060 - 600 / 64, changes: { pixelsPerCell: 1, fitted: 1, centerX: 1, centerY: 1 } }
        ]
    }
    function test_goesToAPlace(row) {
        const p = made(row.set)
        compareSight(p.view, row.scale, row.x, row.y)
        const again = made()
        Object.assign(again.view, row.set)
        compare(again.changes, row.changes)
        Object.assign(again.view, row.set)
        compare(again.changes, row.changes)
        again.view.fit()
        compareSight(again.view, 20, 1040, 2030)
        compare(again.view.fitted, true)
    }

    function test_drawsThePartThatIsShown() {
        const p = made({ pixelsPerCell: 50, centerX: 1020, centerY: 2048 })
        // x from 1000 to 1040, y from 2036 to 2060: the first four columns, 2.4 rows.
        compareSight(p.view, 50, 1020, 2048)
        take(p)
        compare(picture.at(0, 0), test.blue)
        compare(picture.at(100, 50), test.behind)
        compare(picture.at(149, 99), test.behind)
        compare(picture.at(150, 99), test.blue)
        compare(picture.count(test.behind), 2500)
        p.view.centerY = 2030
        take(p)
        compare(picture.at(60, 59), test.blue)
        compare(picture.at(60, 60), test.green)
    }

    function test_keepsAPlaceUnderThePointer_data() {
        return [
            { tag: "wheel", act: v => mouseWheel(v, 60, 40, 0, 120), factor: 1.25 },
            { tag: "wheel with Ctrl", act: v => mouseWheel(v, 60, 40, 0, 120, Qt.NoButton, Qt.ControlModifier), factor: 1.953125 },
            { tag: "small steps add up", act: v => { for (let i = 0; i < 8; ++i) mouseWheel(v, 60, 40, 0, 30) }, factor: 1.5625 },
            { tag: "method", act: v => v.zoom(1.5, 60, 40), factor: 1.5 },
            { tag: "out again", act: v => { v.zoom(2, 60, 40); v.zoom(0.5, 60, 40) }, factor: 1 },
            { tag: "no factor", act: v => { v.zoom(0, 60, 40); v.zoom(NaN, 60, 40); v.zoom(2, NaN, 40); v.zoom(-1, 1, 1) },
              factor: 1 }
        ]
    }
    function test_keepsAPlaceUnderThePointer(row) {
        const p = made({ pixelsPerCell: 25, centerX: 1040, centerY: 2030 })
        const before = p.view.coordinatesAt(60, 40)
        row.act(p.view)
        fuzzyCompare(p.view.pixelsPerCell, 25 * row.factor, 1e-6)
        fuzzyCompare(p.view.coordinatesAt(60, 40).x, before.x, 1e-6)
        fuzzyCompare(p.view.coordinatesAt(60, 40).y, before.y, 1e-6)
    }

    function test_keys_data() {
        return [
            { tag: "left", key: Qt.Key_Left, scale: 40, x: 1035, y: 2030 },
            { tag: "right", key: Qt.Key_Right, scale: 40, x: 1045, y: 2030 },
            { tag: "up", key: Qt.Key_Up, scale: 40, x: 1040, y: 2033 },
            { tag: "down", key: Qt.Key_Down, scale: 40, x: 1040, y: 2027 },
            { tag: "right with Ctrl", key: Qt.Key_Right, modifier: Qt.ControlModifier, scale: 40, x: 1055, y: 2030 },
            { tag: "plus", key: Qt.Key_Plus, scale: 50, x: 1040, y: 2030 },
            { tag: "minus", key: Qt.Key_Minus, scale: 32, x: 1040, y: 2030 },
            { tag: "home", key: Qt.Key_Home, scale: 20, x: 1040, y: 2030 },
            { tag: "another", key: Qt.Key_A, scale: 40, x: 1040, y: 2030, passed: true }
        ]
    }
    function test_keys(row) {
        const p = made({ pixelsPerCell: 40 })
        let passed = 0
        p.Keys.pressed.connect(event => passed += event.key === row.key ? 1 : 0)
        p.view.forceActiveFocus()
        keyClick(row.key, row.modifier || Qt.NoModifier)
        compareSight(p.view, row.scale, row.x, row.y)
        compare(passed, row.passed ? 1 : 0)
        p.view.interactive = false
        const before = p.view.centerX
        keyClick(Qt.Key_Left)
        compare(p.view.centerX, before)
    }

    function test_drags() {
        const p = made({ pixelsPerCell: 40 })
        mousePress(p.view, 100, 60)
        mouseMove(p.view, 102, 60)
        compareSight(p.view, 40, 1040, 2030)
        mouseMove(p.view, 120, 60)
        compareSight(p.view, 40, 1035, 2030)
        mouseMove(p.view, 120, 72)
        compareSight(p.view, 40, 1035, 2033)
        mouseMove(p.view, 1000, 72)
        compareSight(p.view, 40, 1025, 2033)
        mouseRelease(p.view, 1000, 72)
        compare(p.clicks.count, 0)
        p.view.interactive = false
        mouseDrag(p.view, 100, 60, -50, 0)
        compareSight(p.view, 40, 1025, 2033)
    }

    function test_clicksTellCoordinates() {
        const p = made()
        mouseClick(p.view, 30, 10)
        compare(p.clicks.count, 1)
        compare([p.clicks.signalArguments[0][0], p.clicks.signalArguments[0][1]], [1005, 2055])
        compare(terrain.cellAt(1005, 2055), Qt.point(0, 0))
        compare(p.view.activeFocus, true)
        mouseClick(p.view, 10, 10)
        compare(p.clicks.count, 1, "beside the map")
        p.view.pixelsPerCell = 40
        mouseDoubleClickSequence(p.view, 100, 60)
        compare(p.view.fitted, true)
    }

    function test_cursor() {
        const p = made()
        mouseMove(p.view, 30, 10)
        compare([p.view.cursorX, p.view.cursorY, p.view.cursorValue], [1005, 2055, 0])
        mouseMove(p.view, 50, 10)
        compare([p.view.cursorX, p.view.cursorY, p.view.cursorValue], [1015, 2055, 1])
        compare(p.changes, { cursorX: 2, cursorY: 1, cursorValue: 2 })
        mouseMove(p.view, 70, 30)
        compare([p.view.cursorX, p.view.cursorY, p.view.cursorValue], [1025, 2045, NaN])
        // What moves below a pointer at rest.
        p.view.pixelsPerCell = 40
        compare([p.view.cursorX, p.view.cursorY, p.view.cursorValue], [1032.5, 2037.5, 19])
        mouseMove(p.view, 190, 10)
        p.view.fit()
        compare([p.view.cursorX, p.view.cursorY, p.view.cursorValue], [NaN, NaN, NaN])
    }

    function test_fingers() {
        const p = made({ pixelsPerCell: 25, centerX: 1040, centerY: 2030 })
        const fingers = touchEvent(p.view)
        fingers.press(0, p.view, 80, 60).commit()
        fingers.stationary(0).press(1, p.view, 120, 60).commit()
        // Apart by half, and ten pixels to the right.
        fingers.move(0, p.view, 80, 60).move(1, p.view, 140, 60).commit()
        tryVerify(() => Math.abs(p.view.pixelsPerCell - 37.5) < 1e-6)
        fuzzyCompare(p.view.coordinatesAt(110, 60).x, 1040, 1e-6)
        fingers.release(0, p.view, 80, 60).stationary(1).commit()
        fingers.move(1, p.view, 155, 60).commit()
        tryVerify(() => Math.abs(p.view.coordinatesAt(125, 60).x - 1040) < 1e-6)
        fingers.release(1, p.view, 155, 60).commit()
        compare(p.clicks.count, 0)
        const tap = touchEvent(p.view)
        tap.press(0, p.view, 100, 60).commit()
        tap.release(0, p.view, 100, 60).commit()
        compare(p.clicks.count, 1)
        compare(p.view.cursorX, NaN)
    }

    function test_marks_data() {
        return [
            { tag: "coordinates", marks: [{ x: 1040, y: 2030 }], at: [[100, 60]] },
            { tag: "two", marks: [{ x: 1020, y: 2030 }, { x: 1060, y: 2020 }], at: [[60, 60], [140, 80]] },
            { tag: "outside", marks: [{ x: 999, y: 2030 }, { x: 1040, y: 2061 }], at: [] },
            { tag: "without place", marks: [{}, { x: 1040 }, { x: "a", y: 2030 }, { x: 1040, y: "" }, 7, null], at: [] },
            { tag: "no georeference", marks: [{ latitude: 47, longitude: 9 }], at: [] },
            { tag: "no list", marks: 7, at: [] },
            { tag: "one not on the map", marks: [{ x: 1040, y: 3000 }, { x: 1040, y: 2030, label: "" }], at: [[100, 60]] }
        ]
    }
    function test_marks(row) {
        const p = made({ marks: row.marks })
        compare(p.changes, {})
        take(p)
        for (const at of [[100, 60], [60, 60], [140, 80]]) {
            const marked = row.at.some(shown => shown[0] === at[0] && shown[1] === at[1])
            // Along the horizontal line of the cross, 12 pixels to both sides.
            compare(picture.at(at[0] + 3, at[1]) === test.markRed, marked, at)
            compare(picture.at(at[0] - 4, at[1]) === test.markRed, marked, at)
        }
        compare(picture.count(test.markRed) > 0, row.at.length > 0)
        p.view.marks = row.marks
        compare(p.changes, {})
        p.view.marks = []
        compare(p.changes, { marks: 1 })
        take(p)
        compare(picture.count(test.markRed), 0)
    }

    function test_labelsStayInTheView() {
        const p = made({ marks: [{ x: 1079, y: 2030, label: "A long label", detail: "12 m" }] })
        take(p)
        verify(picture.count("#ffffff") > 500, "the plate")
        compare(picture.at(198, 100), test.behind)
        p.view.labelColor = "#123456"
        take(p)
        verify(picture.count("#123456") > 500)
    }

    function test_marksOfAModelAreFollowed() {
        const model = createTemporaryObject(rows, test)
        const p = made({ marks: model })
        take(p)
        compare(picture.count(test.markRed), 0)
        model.append({ x: 1040, y: 2030, label: "" })
        take(p)
        compare(picture.at(103, 60), test.markRed)
        model.setProperty(0, "x", 1060)
        take(p)
        verify(picture.at(103, 60) !== test.markRed)
        compare(picture.at(143, 60), test.markRed)
        model.destroy()
        wait(0)
        take(p)
        compare(picture.count(test.markRed), 0)
    }

    function test_followsItsMap() {
        const map = createTemporaryObject(other, test)
        const p = made({ map: map })
        compare(p.view.pixelsPerCell, NaN)
        p.view.pixelsPerCell = 40
        p.view.centerX = 1050
        tryCompare(map, "status", RasterMap.Ready)
        compareSight(p.view, 40, 1050, 2030)
        // The same place with other values.
        map.source = folder.write("same.asc", "ncols 8\nnrows 6\nxllcorner 1000\nyllcorner 2000\ncellsize 10\n"
                                  + "NODATA_value -1\n" + "7 7 7 7 7 7 7 7\n".repeat(6))
        tryCompare(map, "smallest", 7)
        compareSight(p.view, 40, 1050, 2030)
        mouseMove(p.view, 100, 60)
        compare(p.view.cursorValue, 7)
        // Another place.
        map.source = folder.write("else.asc", "ncols 4\nnrows 4\nxllcorner 0\nyllcorner 0\ncellsize 1\n"
                                  + "NODATA_value -1\n" + "7 7 7 7\n".repeat(4))
        tryCompare(map, "columns", 4)
        compareSight(p.view, 30, 2, 2)
        p.changes = {}
        map.destroy()
        wait(0)
        compare(p.view.map, null)
        compare(p.view.pixelsPerCell, NaN)
        compare(p.changes.map, 1)
        take(p)
        compare(picture.count(test.behind), 200 * 120)
    }

    function test_followsItsSize() {
        const p = made()
        p.width = 400
        p.height = 240
        compareSight(p.view, 40, 1040, 2030)
        compare(p.view.fitted, true)
        p.width = 0
        compare(p.view.pixelsPerCell, NaN)
        p.width = 200
        p.height = 120
        compareSight(p.view, 20, 1040, 2030)
        take(p)
        compare(picture.at(20, 0), test.blue)
    }

    function test_reducesLargeMaps() {
        const map = createTemporaryObject(other, test)
        const p = made({ map: map })
        folder.write("large.clr", "0 0 0 255\n5 0 0 255\n6 0 255 0\n99 0 255 0\n")
        map.source = folder.write("large.asc", "ncols 400\nnrows 240\nxllcorner 0\nyllcorner 0\ncellsize 1\n"
                                  + "NODATA_value -1\n" + (("1 ".repeat(200) + "9 ".repeat(200)) + "\n").repeat(240))
        tryCompare(map, "columns", 400)
        compareSight(p.view, 0.5, 200, 120)
        take(p)
        compare(picture.at(50, 60), test.blue)
        compare(picture.at(150, 60), test.green)
        compare(picture.count(test.behind), 0)
    }
}
