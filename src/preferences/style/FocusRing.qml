import QtQuick
import Tarvik.Preferences

// Around its parent, whose corners it follows. Shown for keyboard focus only.
Rectangle {
    property bool shown: false
    property real around: Theme.controlRadius

    anchors.fill: parent
    anchors.margins: -3
    radius: around + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.accentText
    visible: shown
}
