pragma Singleton
import QtQuick 2.15

/// Colours and sizes of all pages: light on dark for dim rooms, dark on light for daylight.
QtObject {
    property bool dark: true

    readonly property color window: dark ? "#161b22" : "#eef1f4"
    readonly property color panel: dark ? "#1d242d" : "#ffffff"
    readonly property color control: dark ? "#2a333e" : "#e2e7ec"
    readonly property color plot: dark ? "#0b0f14" : "#ffffff"
    readonly property color grid: dark ? "#2b343f" : "#d3dae1"
    readonly property color text: dark ? "#e6edf3" : "#12181f"
    readonly property color dim: dark ? "#a3b0bd" : "#4c5865"
    readonly property color accent: dark ? "#4aa3ff" : "#0a58ca"
    readonly property color accentText: dark ? "#08131f" : "#ffffff"
    readonly property color cursor: dark ? "#c0d8f0" : "#30506f"

    readonly property color newest: dark ? "#ffd34d" : "#123a8c"
    readonly property color maximum: dark ? "#ff7b72" : "#c1271f"
    readonly property color minimum: dark ? "#5fb0ff" : "#8e24aa"
    readonly property color average: dark ? "#63dd78" : "#1a7a37"
    readonly property color fill: dark ? "#26a0b4c8" : "#22405a80"
    readonly property color limit: dark ? "#ff9f43" : "#b84e00"
    readonly property color pass: dark ? "#3fb950" : "#187a34"
    readonly property color fail: dark ? "#ff6a60" : "#c1271f"

    readonly property int fontSize: 13
    readonly property int smallSize: 11
    readonly property int row: 22
    readonly property int button: 30
    readonly property int gap: 6
}
