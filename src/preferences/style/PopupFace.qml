import QtQuick
import Tarvik.Preferences

// The ground of everything that lies over the window, with a soft shadow made of thin rings: the painter has no blur.
Rectangle {
    id: face

    radius: 8
    color: Theme.popup
    border.width: 1
    border.color: Theme.dark ? "#3dffffff" : "#2e000000"

    Repeater {
        model: 6
        Rectangle {
            required property int index
            z: -1
            anchors.fill: parent
            anchors.margins: -index - 1
            anchors.topMargin: -index + 1
            anchors.bottomMargin: -index - 3
            radius: face.radius + index + 1
            color: "#08000000"
        }
    }
}
