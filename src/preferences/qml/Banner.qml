import QtQuick
import Tarvik.Model
import Tarvik.Preferences

// Something that the user should know, and perhaps what can be done about it.
Rectangle {
    property alias title: titleLabel.text
    property alias explanation: explanationLabel.text
    default property alias more: texts.data

    width: parent.width
    height: visible ? texts.height + 20 : 0
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
            id: titleLabel
            width: parent.width
            font.bold: true
        }
        Label {
            id: explanationLabel
            width: parent.width
            font.pixelSize: Theme.callout
        }
    }
}
