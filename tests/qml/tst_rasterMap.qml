import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "RasterMap"
    when: windowShown
    width: 200
    height: 200

    TestFolder { id: folder }
    ItemPicture { id: picture }

    Component {
        id: page
        Item {
            id: top
            property RasterMap map: RasterMap { id: map }
            property var changes: ({})
            function count(name) {
                top.changes[name] = (top.changes[name] || 0) + 1
            }
            Connections {
                target: map
                function onSourceChanged() { top.count("source") }
                function onColorTableChanged() { top.count("colorTable") }
                function onControlPointsChanged() { top.count("controlPoints") }
                function onStatusChanged() { top.count("status") }
                function onErrorStringChanged() { top.count("errorString") }
                function onColumnsChanged() { top.count("columns") }
                function onRowsChanged() { top.count("rows") }
                function onExtentChanged() { top.count("extent") }
                function onCellSizeChanged() { top.count("cellSize") }
                function onSmallestChanged() { top.count("smallest") }
                function onLargestChanged() { top.count("largest") }
                function onHasPlacesChanged() { top.count("hasPlaces") }
                function onPlacesErrorChanged() { top.count("placesError") }
                function onRevisionChanged() { top.count("revision") }
                function onImageChanged() { top.count("image") }
            }
        }
    }

    // 4 x 3 cells of 100 m, west to east on the equator with the central meridian of zone 31 in the middle.
    readonly property string header: "ncols 4\nnrows 3\nxllcorner 499800\nyllcorner 0\ncellsize 100\nNODATA_value -9999\n"
    readonly property string cells: "1 2 3 4\n5 6.1 -9999 8\n9 10 11 100\n"
    readonly property string colors: "0 0 0 255\n10 0 0 255\n10.5 0 255 0\n200 0 255 0\n"
    readonly property int imageReady: 1 // Image.Ready, which the linter does not know
    function georeference(raster, shift) {
        const east = 499800 + (shift || 0)
        const corner = (x, y, column, row, number) => "(%1,%2) (%3,%4) Label \"Pt %5\",\n"
            .arg(x).arg(y).arg(column).arg(row).arg(number)
        return "!table\nFile \"" + raster + "\"\nType \"RASTER\"\n"
            + corner(east, 300, 0, 0, 1) + corner(east + 400, 300, 4, 0, 2)
            + corner(east + 400, 0, 4, 3, 3) + corner(east, 0, 0, 3, 4)
            + "CoordSys Earth Projection 8, 104, \"m\", 3, 0, 0.9996, 500000, 0\nUnits \"m\"\n"
    }

    function write(name) {
        folder.write(name.replace(".asc", ".clr"), test.colors)
        folder.write(name.replace(".asc", ".tab"), georeference(name.replace(/.*\//, "")))
        return folder.write(name, test.header + test.cells)
    }
    function read(p, source) {
        p.map.source = source
        compare(p.map.status, RasterMap.Loading)
        tryCompare(p.map, "status", RasterMap.Ready, 60000)  // after the orders of earlier tests
    }

    function test_isEmptyAtFirst() {
        const map = createTemporaryObject(page, test).map
        compare(map.status, RasterMap.Null)
        compare(map.columns, 0)
        compare(map.rows, 0)
        compare(map.extent, Qt.rect(0, 0, 0, 0))
        compare(map.cellSize, NaN)
        compare(map.smallest, NaN)
        compare(map.largest, NaN)
        compare(map.hasPlaces, false)
        compare(map.image, "")
        compare(map.revision, 0)
        compare(map.valueOfCell(0, 0), NaN)
        compare(map.valueAt(0, 0), NaN)
        compare(map.cellAt(0, 0), Qt.point(NaN, NaN))
        compare(map.centerOfCell(0, 0), Qt.point(NaN, NaN))
        compare(map.coordinatesOf(0, 3), Qt.point(NaN, NaN))
    }

    function test_reads() {
        const p = createTemporaryObject(page, test)
        read(p, write("map.asc"))
        compare(p.map.errorString, "")
        compare(p.map.columns, 4)
        compare(p.map.rows, 3)
        compare(p.map.extent, Qt.rect(499800, 0, 400, 300))
        compare(p.map.cellSize, 100)
        compare(p.map.smallest, 1)
        compare(p.map.largest, 100)
        compare(p.map.hasPlaces, true)
        compare(p.map.placesError, "")
        compare(p.map.revision, 1)
        compare(p.changes, { source: 1, status: 2, columns: 1, rows: 1, extent: 1, cellSize: 1, smallest: 1, largest: 1,
                             hasPlaces: 1, revision: 1, image: 1 })
    }

    function test_cellsByCoordinates_data() {
        return [
            { tag: "lower left corner", x: 499800, y: 0, cell: [0, 2], value: 9 },
            { tag: "upper right corner", x: 500200, y: 300, cell: [3, 0], value: 4 },
            { tag: "border of four cells", x: 500000, y: 200, cell: [2, 1], value: NaN },
            { tag: "decimal", x: 499950, y: 150, cell: [1, 1], value: 6.1 },
            { tag: "west of the map", x: 499799.9, y: 100, cell: [NaN, NaN], value: NaN },
            { tag: "north of the map", x: 500000, y: 300.1, cell: [NaN, NaN], value: NaN },
            { tag: "nowhere", x: NaN, y: 100, cell: [NaN, NaN], value: NaN },
            { tag: "infinite", x: 500000, y: Infinity, cell: [NaN, NaN], value: NaN }
        ]
    }
    function test_cellsByCoordinates(row) {
        const p = createTemporaryObject(page, test)
        read(p, write("map.asc"))
        compare(p.map.cellAt(row.x, row.y), Qt.point(row.cell[0], row.cell[1]))
        compare(p.map.valueAt(row.x, row.y), row.value)
    }

    function test_valuesOfCells_data() {
        return [
            { tag: "first", column: 0, row: 0, value: 1, x: 499850, y: 250 },
            { tag: "last", column: 3, row: 2, value: 100, x: 500150, y: 50 },
            { tag: "not measured", column: 2, row: 1, value: NaN, x: 500050, y: 150 },
            { tag: "fractions", column: 3.9, row: 1.9, value: 8, x: 500150, y: 150 },
            { tag: "left of the map", column: -0.1, row: 0, value: NaN, x: NaN, y: NaN },
            { tag: "below the map", column: 0, row: 3, value: NaN, x: NaN, y: NaN },
            { tag: "far away", column: 1e300, row: 0, value: NaN, x: NaN, y: NaN },
            { tag: "none", column: NaN, row: NaN, value: NaN, x: NaN, y: NaN }
        ]
    }
    function test_valuesOfCells(row) {
        const p = createTemporaryObject(page, test)
        read(p, write("map.asc"))
        compare(p.map.valueOfCell(row.column, row.row), row.value)
        compare(p.map.centerOfCell(row.column, row.row), Qt.point(row.x, row.y))
    }

    // A degree of latitude at the equator has 110574 m, one of longitude 111320 m; the scale is 0.9996.
    function test_places() {
        const p = createTemporaryObject(page, test)
        read(p, write("map.asc"))
        const point = p.map.coordinatesOf(0.0018, 3.001)
        fuzzyCompare(point.x, 500000 + 0.001 * 111320 * 0.9996, 0.1)
        fuzzyCompare(point.y, 0.0018 * 110574 * 0.9996, 0.1)
        compare(p.map.valueAt(point.x, point.y), 8)
        compare(p.map.cellAt(point.x, point.y), Qt.point(3, 1))
        const place = p.map.placeAt(point.x, point.y)
        fuzzyCompare(place.latitude, 0.0018, 1e-9)
        fuzzyCompare(place.longitude, 3.001, 1e-9)
        compare(p.map.coordinatesOf(NaN, 3), Qt.point(NaN, NaN))
        compare(p.map.placeAt(NaN, 0), { latitude: NaN, longitude: NaN })
    }

    function test_placesNeedAGeoreference_data() {
        return [
            { tag: "none beside", tab: "", error: "map.asc: has no georeference beside it: there is no map.tab" },
            { tag: "of another raster", tab: georeference("hill.asc"),
              error: "map.tab: is the georeference of another raster, \"hill.asc\"" },
            { tag: "elsewhere", tab: georeference("map.asc", 500),
              error: "map.tab: places Pt 1 more than a cell from where map.asc has it" }
        ]
    }
    function test_placesNeedAGeoreference(row) {
        const p = createTemporaryObject(page, test)
        const source = write(row.tag + "/map.asc")
        folder.remove(row.tag + "/map.tab")
        if (row.tab) {
            folder.write(row.tag + "/map.tab", row.tab)
        }
        read(p, source)
        compare(p.map.hasPlaces, false)
        compare(p.map.placesError, folder.path(row.tag) + "/" + row.error)
        compare(p.map.coordinatesOf(0, 3), Qt.point(NaN, NaN))
        compare(p.map.placeAt(500000, 0), { latitude: NaN, longitude: NaN })
        compare(p.map.valueOfCell(0, 0), 1)
    }

    function test_takesAnotherGeoreference() {
        const p = createTemporaryObject(page, test)
        const source = write("named/map.asc")
        folder.remove("named/map.tab")
        p.map.controlPoints = folder.write("points.tab", georeference("any.bil"))
        read(p, source)
        compare(p.map.hasPlaces, true)
        compare(p.changes.controlPoints, 1)
        p.map.controlPoints = folder.write("wrong.tab", georeference("map.asc", 500))
        tryCompare(p.map, "status", RasterMap.Error)
        compare(p.map.errorString, folder.path("wrong.tab") + ": places Pt 1 more than a cell from where map.asc has it")
        compare(p.map.hasPlaces, true)
    }

    function test_countsCellsWhereTheRasterDoesNotPlaceThem() {
        const p = createTemporaryObject(page, test)
        read(p, folder.write("bare.asc", "ncols 3\nnrows 2\nNODATA_value -9999\n1 2 3\n4 5 6\n"))
        compare(p.map.extent, Qt.rect(0, 0, 3, 2))
        compare(p.map.cellSize, 1)
        compare(p.map.valueAt(2.5, 0.5), 6)
        compare(p.map.placesError, folder.path("bare.asc")
                + ": does not say where its cells lie: the cell size is 0, the origin 0,0")
    }

    function test_readsFloats() {
        const p = createTemporaryObject(page, test)
        // Singles of 2, 3, 8 and 32; the origin is the centre of the upper left cell.
        folder.write("f.bil", "\u0000\u0000\u0000@" + "\u0000\u0000@@" + "\u0000\u0000\u0000A" + "\u0000\u0000\u0000B")
        read(p, folder.write("f.hdr", "NCOLS 2\nNROWS 2\nULXMAP 9\nULYMAP 47\nXDIM 0.5\nNODATA 32\nPIXELTYPE FLOAT\n"))
        compare(p.map.extent, Qt.rect(8.75, 46.25, 1, 1))
        compare(p.map.valueOfCell(0, 0), 2)
        compare(p.map.valueAt(9.5, 47), 3)
        compare(p.map.valueAt(9, 46.5), 8)
        compare(p.map.valueAt(9.5, 46.5), NaN)
        read(p, folder.url("f.bil"))
        compare(p.map.valueOfCell(1, 0), 3)
    }

    function test_readsEveryName_data() {
        return [
            { tag: "資料/Карта é.asc" },
            { tag: "100 % #1?.asc" }
        ]
    }
    function test_readsEveryName(row) {
        const p = createTemporaryObject(page, test)
        read(p, write(row.tag))
        compare(p.map.valueOfCell(3, 2), 100)
        compare(p.map.hasPlaces, true)
    }

    function test_reloads() {
        const p = createTemporaryObject(page, test)
        read(p, write("reload.asc"))
        const image = p.map.image
        p.changes = {}
        p.map.reload()
        compare(p.map.status, RasterMap.Loading)
        tryCompare(p.map, "status", RasterMap.Ready)
        compare(p.changes, { status: 2 })
        compare(p.map.image, image)
        p.changes = {}
        folder.write("reload.asc", test.header + "1 -5 3 4\n5 6 -9999 8\n9 10 11 100\n")
        p.map.reload()
        compare(p.map.valueOfCell(1, 0), 2)
        tryCompare(p.map, "status", RasterMap.Ready)
        compare(p.map.valueOfCell(1, 0), -5)
        compare(p.changes, { status: 2, smallest: 1, revision: 1, image: 1 })
        verify(p.map.image !== image)
        p.changes = {}
        p.map.source = ""
        compare(p.map.status, RasterMap.Null)
        compare(p.map.columns, 0)
        compare(p.map.image, "")
        compare(p.map.revision, 3)
        p.map.reload()
        compare(p.changes.revision, 1)
    }

    function test_reportsFailures_data() {
        return [
            { tag: "missing", name: "none.asc", error: "none.asc: No such file or directory" },
            { tag: "broken", name: "broken.asc", text: test.header + "1 2 3 x\n",
              error: "broken.asc:7: \"x\" is no number: read as 0" },
            { tag: "no raster", name: "map.png", text: "", error: "map.png: a raster ends in .asc, .bil or .hdr" },
            { tag: "integers", name: "i.hdr", text: "NCOLS 2\nNROWS 2\n",
              error: "i.hdr: holds integers (PIXELTYPE is not FLOAT), which are not read; gdal_translate -of EHdr -ot "
                     + "Float32 converts them" }
        ]
    }
    function test_reportsFailures(row) {
        const p = createTemporaryObject(page, test)
        read(p, write("good.asc"))
        p.changes = {}
        folder.write("i.bil", "")
        if ("text" in row) {
            folder.write(row.name, row.text)
        }
        p.map.source = folder.url(row.name)
        tryCompare(p.map, "status", RasterMap.Error)
        compare(p.map.errorString, folder.path("") + "/" + row.error)
        compare(p.changes, { source: 1, status: 2, errorString: 1 })
        compare(p.map.valueOfCell(3, 2), 100, "what was held stays")
        p.map.source = folder.url("good.asc")
        tryCompare(p.map, "status", RasterMap.Ready)
        compare(p.map.errorString, "")
        compare(p.map.revision, 1)
    }

    function test_refusesRemoteFiles() {
        const p = createTemporaryObject(page, test)
        p.map.source = "http://localhost/map.asc"
        tryCompare(p.map, "status", RasterMap.Error)
        compare(p.map.errorString, "http://localhost/map.asc: is not a local file")
    }

    Component {
        id: named
        RasterMap {
            property int readings: 0
            source: folder.url("once/map.asc")
            colorTable: folder.url("once/other.clr")
            controlPoints: folder.url("once/map.tab")
            onRevisionChanged: ++readings
        }
    }
    function test_readsOnceWhatAPageNames() {
        write("once/map.asc")
        folder.write("once/other.clr", "0 9 8 7\n200 9 8 7\n")
        const map = createTemporaryObject(named, test)
        compare(map.status, RasterMap.Loading)
        tryCompare(map, "status", RasterMap.Ready)
        compare(map.readings, 1)
    }

    Component {
        id: imagePage
        Rectangle {
            property alias source: image.source
            property alias cached: image.cache
            property alias requested: image.sourceSize
            property alias shown: image
            width: 40
            height: 30
            color: "#ff00ff"
            Image { id: image; anchors.fill: parent; smooth: false }
        }
    }
    function take(item) {
        picture.take(item)
        tryCompare(picture, "width", item.width)
        compare(picture.height, item.height)
    }

    function test_imagesShowTheMap() {
        const p = createTemporaryObject(page, test)
        read(p, write("colors.asc"))
        const shown = createTemporaryObject(imagePage, test, { source: p.map.image })
        compare(shown.shown.status, test.imageReady)
        compare(shown.requested, Qt.size(4, 3))
        take(shown)
        compare(picture.at(5, 5), "#0000ff", "1 is in the first range")
        compare(picture.at(35, 25), "#00ff00", "100 is in the second")
        compare(picture.at(25, 15), "#ff00ff", "not measured")
        compare(picture.count("#ff00ff"), 100)
        // Another colour table, under another url.
        const before = p.map.image
        p.map.colorTable = folder.write("red.clr", "0 255 0 0\n200 255 0 0\n")
        tryVerify(() => p.map.image !== before)
        shown.source = p.map.image
        take(shown)
        compare(picture.count("#ff0000"), 1100)
        compare(p.map.valueOfCell(0, 0), 1)
        p.map.colorTable = folder.url("none.clr")
        tryCompare(p.map, "status", RasterMap.Error)
        compare(p.map.errorString, folder.path("none.clr") + ": No such file or directory")
    }

    function test_imagesOfOtherNamesAreEmpty_data() {
        return [{ tag: "image://rfutils-map/0/1" }, { tag: "image://rfutils-map/" }, { tag: "image://rfutils-map/x/y/z" }]
    }
    function test_imagesOfOtherNamesAreEmpty(row) {
        const shown = createTemporaryObject(imagePage, test, { source: row.tag })
        tryCompare(shown.shown, "status", test.imageReady)
        take(shown)
        compare(picture.count("#ff00ff"), 1200)
    }

    function test_imagesEndWithTheMap() {
        const p = createTemporaryObject(page, test)
        read(p, write("end.asc"))
        const image = p.map.image
        p.destroy()
        wait(0)
        const shown = createTemporaryObject(imagePage, test, { cached: false, source: image })
        take(shown)
        compare(picture.count("#ff00ff"), 1200)
    }

    function test_imagesAreReducedWhereAskedFor() {
        const p = createTemporaryObject(page, test)
        read(p, write("reduced.asc"))
        const shown = createTemporaryObject(imagePage, test, { requested: Qt.size(2, 0), source: p.map.image })
        compare(shown.shown.implicitWidth, 2)
        compare(shown.shown.implicitHeight, 1)
        const large = createTemporaryObject(imagePage, test, { requested: Qt.size(4000, 3000), source: p.map.image })
        compare(large.shown.implicitWidth, 4)
    }

    function test_objectsMayEndAtAnyTime() {
        const source = write("atAnyTime.asc")
        for (let i = 0; i < 20; ++i) {
            const p = page.createObject(test)
            p.map.source = source
            if (i % 2) {
                wait(i)
            }
            p.destroy()
            wait(0)
        }
    }
}
