import QtQuick
import QtQuick.Templates as T
import Tarvik.Model
import Tarvik.Preferences

// A symbol without a border; `text` is its name and its help tip.
T.Button {
    id: control

    property string symbol

    implicitWidth: 28
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    Accessible.name: text
    Accessible.description: text
    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            width: 16
            height: 16
            name: control.symbol
            color: control.hovered || control.visualFocus ? Theme.text : Theme.secondaryText
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.down ? Theme.controlPressed : control.hovered ? Theme.tint : "transparent"
        FocusRing { shown: control.visualFocus }
    }
    HelpTip { text: control.text; visible: control.hovered && !control.down }
}
