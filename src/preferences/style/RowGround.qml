import QtQuick
import Tarvik.Preferences

// The ground of a row of a BorderedList: every second one is tinted.
Rectangle {
    required property int row
    property bool marked: false

    anchors.fill: parent
    anchors.leftMargin: 5
    anchors.rightMargin: 5
    radius: 6
    color: marked ? Theme.accentTint : row % 2 === 1 ? Theme.alternateRow : "transparent"
    Behavior on color { ColorAnimation { duration: Theme.moving } }

    // A mark that does not depend on telling colours apart.
    Rectangle {
        y: 6
        width: 3
        height: parent.height - 12
        radius: 1.5
        color: Theme.accentText
        visible: parent.marked
    }
}
