import QtQuick
import Tarvik.Preferences

// The face of a button.
Rectangle {
    property bool hovered: false
    property bool down: false
    property bool focused: false

    radius: Theme.controlRadius
    color: down ? Theme.controlPressed : hovered ? Theme.controlHovered : Theme.control
    border.width: 1
    border.color: Theme.controlBorder
    Behavior on color { ColorAnimation { duration: Theme.moving } }

    FocusRing { shown: parent.focused }
}
