import QtQuick 2.15
import QtQuick.Controls 2.15
import RfUtils 1.0

// The result setups, by their groups.
Pane {
    id: page

    property url source

    signal chosen(string label)

    padding: 6

    SetupModel { id: setups; source: page.source }

    ListView {
        id: list
        objectName: "setups"
        anchors.fill: parent
        clip: true
        model: setups
        section.property: "group"
        section.delegate: Label {
            required property string section
            topPadding: 12
            bottomPadding: 4
            leftPadding: 6
            font.bold: true
            font.capitalization: Font.Capitalize
            text: section
        }
        delegate: ItemDelegate {
            id: row
            required property int index
            required property string label
            objectName: "setup" + index
            width: list.width
            text: label
            highlighted: index === list.currentIndex
            onClicked: {
                list.currentIndex = row.index
                page.chosen(row.label)
            }
        }
        ScrollBar.vertical: ScrollBar {}
    }
}
