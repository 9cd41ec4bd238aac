import QtQuick
import QtQuick.Templates as T
import Tarvik.Preferences

// A row of a form that is one switch: its label belongs to it. Binds `checked`; the handler of `toggled` writes.
T.Switch {
    id: control

    width: parent.width
    implicitHeight: Math.max(Theme.row, contentItem.implicitHeight + 16)
    leftPadding: 12
    rightPadding: 12
    hoverEnabled: true
    Accessible.name: text

    contentItem: Text {
        rightPadding: control.indicator.width + 12
        text: control.text
        font.pixelSize: Theme.body
        color: Theme.text
        wrapMode: Text.Wrap
        verticalAlignment: Text.AlignVCenter
        opacity: control.enabled ? 1 : 0.45
    }
    indicator: Rectangle {
        x: control.width - width - control.rightPadding
        y: (control.height - height) / 2
        width: 36
        height: 20
        radius: 10
        opacity: control.enabled ? 1 : 0.45
        color: control.checked ? Theme.accent : Theme.track
        border.width: 1
        border.color: control.checked ? Qt.darker(Theme.accent, 1.15) : Theme.controlBorder
        Behavior on color { ColorAnimation { duration: Theme.moving } }

        Rectangle {
            x: control.checked ? parent.width - width - 2 : 2
            y: 2
            width: control.down ? 19 : 16
            height: 16
            radius: 8
            color: Theme.knob
            border.width: 1
            border.color: "#26000000"
            Behavior on x { NumberAnimation { duration: Theme.moving; easing.type: Easing.OutQuad } }
            Behavior on width { NumberAnimation { duration: Theme.moving; easing.type: Easing.OutQuad } }
        }
        FocusRing { shown: control.visualFocus; around: parent.radius }
    }
    background: Item { Hairline { visible: control.y > 0 } }
}
