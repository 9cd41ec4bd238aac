import QtQuick
import QtQuick.Templates as T
import Tarvik.Preferences

// Continuous. Binds `value`; the handler of `moved` writes. Keys move it by one unit, Page Up and Down by ten.
T.Slider {
    id: control

    property real unit: 1

    function step(by) {
        value = Math.min(to, Math.max(from, value + by))
        moved()
    }

    implicitHeight: 22
    hoverEnabled: true
    Keys.onLeftPressed: step(-unit)
    Keys.onDownPressed: step(-unit)
    Keys.onRightPressed: step(unit)
    Keys.onUpPressed: step(unit)
    Keys.onPressed: (event) => {
        const steps = ({ [Qt.Key_PageDown]: -10 * unit, [Qt.Key_PageUp]: 10 * unit, [Qt.Key_Home]: from - to, [Qt.Key_End]: to - from })
        if (event.key in steps) {
            step(steps[event.key])
            event.accepted = true
        }
    }

    background: Rectangle {
        x: control.handle.width / 2
        anchors.verticalCenter: parent.verticalCenter
        width: control.width - control.handle.width
        height: 4
        radius: 2
        color: Theme.track
        Rectangle {
            width: control.visualPosition * parent.width
            height: parent.height
            radius: 2
            color: Theme.accent
        }
    }
    handle: Rectangle {
        x: control.visualPosition * (control.width - width)
        anchors.verticalCenter: parent.verticalCenter
        width: 18
        height: 18
        radius: 9
        color: control.pressed ? "#ededf0" : Theme.knob
        border.width: 1
        border.color: "#40000000"
        FocusRing { shown: control.visualFocus; around: parent.radius }
    }
}
