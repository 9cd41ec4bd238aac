import QtQuick
import QtQuick.Templates as T
import Tarvik.Model
import Tarvik.Preferences

// An entry of a pop-up button's list.
T.ItemDelegate {
    id: control

    property bool chosen: false

    implicitHeight: 26
    leftPadding: 28
    rightPadding: 12
    hoverEnabled: true
    Accessible.name: text
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: chosen

    contentItem: Text {
        text: control.text
        font.pixelSize: Theme.body
        color: control.highlighted ? Theme.highlightText : Theme.text
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: 5
        color: control.highlighted ? Theme.highlight : "transparent"
        Symbol {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            width: 14
            height: 14
            visible: control.chosen
            name: "checkmark"
            color: control.highlighted ? Theme.highlightText : Theme.text
        }
    }
}
