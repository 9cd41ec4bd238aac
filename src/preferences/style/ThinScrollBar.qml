import QtQuick
import QtQuick.Templates as T
import Tarvik.Preferences

// Appears when there is something to scroll.
T.ScrollBar {
    id: control

    implicitWidth: 10
    padding: 2
    minimumSize: 0.1
    policy: T.ScrollBar.AsNeeded
    visible: size < 1.0

    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        color: Theme.text
        opacity: control.pressed ? 0.55 : control.hovered ? 0.42 : 0.28
    }
}
