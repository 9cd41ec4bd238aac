import QtQuick
import Tarvik.Model
import Tarvik.Preferences

// An application: its icon where it is installed, its name, its identifier.
Row {
    id: label

    required property string appId
    required property string name
    required property bool installed

    spacing: 8

    ApplicationIcon {
        anchors.verticalCenter: parent.verticalCenter
        width: 18
        height: 18
        visible: label.installed
        appId: label.appId
    }
    Label {
        id: title
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, label.width * 0.6)
        text: label.name
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
    }
    Caption {
        anchors.baseline: title.baseline
        width: Math.min(implicitWidth, label.width - x)
        text: label.appId
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
    }
}
