import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import RfUtils 1.0

/// The tool bar: what is needed at a glance, each with a key.
Rectangle {
    id: strip

    required property var page
    required property Commands commands
    required property Measurement measurement

    implicitHeight: Theme.button + 8
    implicitWidth: row.implicitWidth + 12
    color: Theme.window

    component Gap: Item {
        Layout.preferredWidth: 3
    }

    RowLayout {
        id: row
        anchors { fill: parent; leftMargin: 6; rightMargin: 6 }
        spacing: 3

        ToolItem { command: strip.commands.of("open") }
        ToolItem { command: strip.commands.of("picture") }
        ToolItem { command: strip.commands.of("data") }
        Gap {}
        ToolItem { objectName: "pause"; command: strip.commands.of("pause"); checked: strip.measurement.paused }
        ToolItem { command: strip.commands.of("latest") }
        Gap {}
        ToolItem { command: strip.commands.of("peakLeft") }
        ToolItem { objectName: "peak"; command: strip.commands.of("peak") }
        ToolItem { command: strip.commands.of("peakRight") }
        Gap {}
        ToolItem { objectName: "whole"; command: strip.commands.of("whole"); enabled: strip.measurement.zoom.zoomed }
        ToolItem { command: strip.commands.of("levels") }
        ToolItem { command: strip.commands.of("range") }
        UnitBox { measurement: strip.measurement; units: strip.commands.units }
        Item { Layout.fillWidth: true }
        ToolItem { command: strip.commands.of("table"); checked: strip.page.showTable }
        ToolItem { command: strip.commands.of("map"); checked: strip.page.showMap }
        ToolItem { command: strip.commands.of("settings"); checked: strip.page.showSettings }
        ToolItem { command: strip.commands.of("help"); checked: strip.page.showHelp }
    }
    Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } height: 1; color: Theme.grid }
}
