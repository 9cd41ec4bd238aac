import QtQuick
import Tarvik.Model
import Tarvik.Preferences

// What is missing for gestures to work; gone as soon as it is there.
Rectangle {
    id: banner

    width: parent.width
    height: visible ? texts.height + 20 : 0
    visible: !Permissions.trusted
    radius: 8
    color: Qt.rgba(Theme.warning.r, Theme.warning.g, Theme.warning.b, 0.12)

    Symbol {
        x: 10
        y: 9
        width: 20
        height: 20
        name: "exclamationmark.triangle.fill"
        color: Theme.warning
    }
    Column {
        id: texts
        x: 40
        y: 10
        width: parent.width - 50
        spacing: 6

        Label {
            width: parent.width
            text: Texts.permissionTitle
            font.bold: true
        }
        Label {
            width: parent.width
            text: Texts.permissionExplanation
            font.pixelSize: Theme.callout
        }
        PushButton {
            text: Texts.permissionButton
            onClicked: Permissions.grant()
        }
    }
}
