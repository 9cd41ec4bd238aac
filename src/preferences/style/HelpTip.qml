import QtQuick
import QtQuick.Templates as T
import Tarvik.Preferences

T.ToolTip {
    id: control

    x: (parent.width - implicitWidth) / 2
    y: parent.height + 4
    implicitWidth: contentItem.implicitWidth + 16
    implicitHeight: contentItem.implicitHeight + 10
    margins: 8
    padding: 5
    leftPadding: 8
    rightPadding: 8
    delay: 600
    closePolicy: T.Popup.NoAutoClose

    contentItem: Text {
        text: control.text
        font.pixelSize: Theme.caption
        color: Theme.text
    }
    background: PopupFace { radius: 6 }
}
