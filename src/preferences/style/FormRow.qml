import QtQuick
import Tarvik.Preferences

// A label at the left, its control at the right.
Item {
    id: row

    default property alias control: control.data
    property string label

    width: parent.width
    implicitHeight: Math.max(Theme.row, label.implicitHeight + 16, control.height + 10)

    Hairline {}
    Label {
        id: label
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: control.x - 12 - x
        text: row.label
    }
    Item {
        id: control
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}
