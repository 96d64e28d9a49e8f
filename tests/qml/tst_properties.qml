import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

// What all types have in common.
TestCase {
    id: test
    name: "Properties"
    when: windowShown

    Component { id: levelText; LevelText { level: -50; unit: "V" } }
    Component { id: levelEntry; LevelEntry { text: "5 V"; max: 0 } }
    Component { id: rasterMap; RasterMap {} }
    Component { id: mapView; MapView { map: RasterMap {} } }
    Component { id: rangeHint; RangeHint { type: RangeHint.Dbuv; min: -30; max: 0 } }
    Component { id: catalogue; Catalogue { source: "qrc:/catalogue.json" } }
    Component { id: choiceModel; ChoiceModel { catalogue: Catalogue {} } }
    Component { id: setupModel; SetupModel { source: "qrc:/setups.json" } }
    Component { id: toastModel; ToastModel {} }
    Component { id: frequencyZoom; FrequencyZoom {} }
    Component { id: traceView; TraceView {} }
    Component { id: waterfallView; WaterfallView {} }
    Component { id: traceModel; TraceModel { startFrequency: 88; stopFrequency: 108; Component.onCompleted: append([-1, -2]) } }
    Component {
        id: recordingSource
        RecordingSource {
            trace: TraceModel {}
            source: folder.write("r.csv", "-1,-2\n")
            arguments: ["unused"]
        }
    }
    TestFolder { id: folder }

    Component {
        id: markerModel
        MarkerModel { trace: TraceModel { Component.onCompleted: append([-1, -2]) } limit: -1.5; Component.onCompleted: set(0, 1) }
    }

    function settled(component, property, value) {
        const object = createTemporaryObject(component, test)
        tryCompare(object, property, value)
        return object
    }

    function test_survivesGarbageCollection_data() {
        return [
            { tag: "RfUnits", make: () => RfUnits, names: ["levelUnits", "fieldUnits", "entryUnits"] },
            { tag: "LevelText", make: () => createTemporaryObject(levelText, test) },
            { tag: "LevelEntry", make: () => createTemporaryObject(levelEntry, test) },
            { tag: "RasterMap", make: () => createTemporaryObject(rasterMap, test) },
            { tag: "MapView", make: () => createTemporaryObject(mapView, test), names: ["map", "marks", "font"] },
            { tag: "RangeHint", make: () => createTemporaryObject(rangeHint, test) },
            { tag: "Catalogue", make: () => settled(catalogue, "status", Catalogue.Ready) },
            { tag: "ChoiceModel", make: () => createTemporaryObject(choiceModel, test) },
            { tag: "SetupModel", make: () => settled(setupModel, "status", SetupModel.Ready) },
            { tag: "MarkerModel", make: () => createTemporaryObject(markerModel, test) },
            { tag: "ToastModel", make: () => createTemporaryObject(toastModel, test) },
            { tag: "FrequencyZoom", make: () => createTemporaryObject(frequencyZoom, test) },
            { tag: "TraceView", make: () => createTemporaryObject(traceView, test), names: ["trace", "zoom", "markers", "font"] },
            { tag: "RecordingSource", make: () => settled(recordingSource, "status", RecordingSource.Ready) },
            { tag: "WaterfallView", make: () => createTemporaryObject(waterfallView, test),
              names: ["trace", "zoom", "markers", "font", "palette", "palettes", "cursorTime"] },
            { tag: "TraceModel", make: () => settled(traceModel, "count", 1) }
        ]
    }
    function test_survivesGarbageCollection(row) {
        const object = row.make()
        const names = row.names || Object.keys(object).filter(name => typeof object[name] !== "function")
        verify(names.length > 1)
        const before = names.map(name => String(object[name]))
        for (const name of names) {
            object[name]
            gc()
            wait(0)
        }
        compare(names.map(name => String(object[name])), before)
    }
}
