import QtQuick
import QtQuick.Templates as T
import Tarvik.Model
import Tarvik.Preferences

T.Button {
    id: control

    property string symbol
    property color symbolColor: Theme.text

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: symbol ? 9 : 12
    rightPadding: 12
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()

    contentItem: Item {
        implicitWidth: (symbol.visible ? symbol.width + 6 : 0) + title.implicitWidth
        Symbol {
            id: symbol
            anchors.verticalCenter: parent.verticalCenter
            width: 16
            height: 16
            visible: control.symbol.length > 0
            name: control.symbol
            color: control.symbolColor
        }
        Text {
            id: title
            x: symbol.visible ? symbol.width + 6 : 0
            width: parent.width - x
            height: parent.height
            text: control.text
            font.pixelSize: Theme.body
            color: Theme.text
            elide: Text.ElideRight
            horizontalAlignment: symbol.visible ? Text.AlignLeft : Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }
    background: ControlBackground {
        hovered: control.hovered
        down: control.down
        focused: control.visualFocus
    }
}
