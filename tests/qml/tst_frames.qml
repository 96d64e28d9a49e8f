import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

// Views that are drawn frame by frame, as in a window. The processor draws what has changed only.
TestCase {
    id: test
    name: "Frames"
    when: windowShown
    width: 200
    height: 200
    visible: true

    readonly property string none: "#00ff00"
    readonly property string cursor: "#ff0000"

    Component { id: sweeps; TraceModel { startFrequency: 100; stopFrequency: 108; updateInterval: 0 } }
    Component { id: stages; Stage {} }
    // The views are not in the corner of the window, their plots 40 pixels wide and high from (30, 40) on.
    Component {
        id: pages
        Rectangle {
            id: page
            property Component shown
            property Item view: loader.item
            width: 100
            height: 100
            color: test.none
            Loader { id: loader; x: 20; y: 30; width: 60; height: 60; sourceComponent: page.shown }
        }
    }
    Component {
        id: traceView
        TraceView {
            leftMargin: 10; topMargin: 10; rightMargin: 10; bottomMargin: 10
            minLevel: -100; maxLevel: -20; cursorColor: test.cursor; gridColor: "transparent"; textColor: "transparent"
        }
    }
    Component {
        id: waterfallView
        WaterfallView {
            leftMargin: 10; topMargin: 10; rightMargin: 10; bottomMargin: 10
            minLevel: -100; maxLevel: -20; cursorColor: test.cursor; textColor: "transparent"
        }
    }

    /// Seventy frames with a trace each, while the cursor moves; last it is in the middle.
    function drawn(view) {
        if (GraphicsInfo.api !== GraphicsInfo.Software) {
            skip("needs the software backend")
        }
        const trace = createTemporaryObject(sweeps, test)
        const page = createTemporaryObject(pages, test, { shown: view })
        const stage = createTemporaryObject(stages, test)
        stage.show(page)
        page.view.trace = trace
        for (let i = 0; i < 70; ++i) {
            verify(trace.append(Array(8).fill(-20 - i)))
            page.view.cursorFrequency = i % 10 === 0 ? NaN : 104 + (69 - i) % 3
            stage.draw()
        }
        return stage
    }

    function test_nothingIsOutside_data() {
        return [{ tag: "TraceView", view: traceView }, { tag: "WaterfallView", view: waterfallView }]
    }
    function test_nothingIsOutside(row) {
        const stage = drawn(row.view)
        for (let y = 0; y < 100; ++y) {
            for (let x = 0; x < 100; ++x) {
                if (x < 20 || y < 30 || x >= 80 || y >= 90) {
                    compare(stage.at(x, y), none, "at " + x + ", " + y)
                }
            }
        }
        compare([49, 50, 51].map(x => stage.at(x, 75) === cursor), [false, true, false])
    }

    function test_waterfallsAreFull() {
        const stage = drawn(waterfallView)
        for (const [x, y] of [[30, 40], [69, 40], [30, 79], [69, 79], [35, 60]]) {
            verify(stage.at(x, y) !== none)
        }
        for (const [x, y] of [[29, 40], [70, 40], [30, 39], [30, 80]]) {
            compare(stage.at(x, y), none)
        }
    }
}
