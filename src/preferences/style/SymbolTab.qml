import QtQuick
import QtQuick.Templates as T
import Tarvik.Model
import Tarvik.Preferences

// A tab: its symbol above its title.
T.TabButton {
    id: control

    property string symbol
    readonly property color ink: checked ? Theme.accentText : Theme.secondaryText

    implicitWidth: Math.max(84, Math.ceil(metrics.advanceWidth) + 20)
    implicitHeight: 52
    hoverEnabled: true
    // The row of tabs is one stop of the Tab key; arrows move in it.
    focusPolicy: checked || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: checked

    // The width of the bolder title, so that nothing moves when a tab is chosen.
    TextMetrics {
        id: metrics
        text: control.text
        font.pixelSize: Theme.caption
        font.weight: Font.DemiBold
    }

    contentItem: Item {
        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 6
            width: 24
            height: 24
            name: control.symbol
            color: control.ink
        }
        Text {
            id: title
            anchors.horizontalCenter: parent.horizontalCenter
            y: 32
            text: control.text
            font.pixelSize: Theme.caption
            font.weight: control.checked ? Font.DemiBold : Font.Normal
            color: control.ink
        }
    }
    background: Rectangle {
        radius: 8
        color: control.checked ? Theme.accentTint : control.hovered ? Theme.tint : "transparent"
        Behavior on color { ColorAnimation { duration: Theme.moving } }
        FocusRing { shown: control.visualFocus; around: parent.radius }
    }
}
