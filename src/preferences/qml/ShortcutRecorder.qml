import QtQuick
import QtQuick.Templates as T
import Tarvik.Model
import Tarvik.Preferences

// Shows the shortcut of a gesture and takes a new one from the keyboard.
PushButton {
    id: control

    required property string gesture
    required property string arrows
    required property string shortcut
    readonly property bool recording: Capture.active && Capture.gesture === gesture

    implicitWidth: Math.max(110, Math.ceil(implicitContentWidth) + leftPadding + rightPadding)
    text: recording ? qsTr("Type shortcut…") : shortcut || qsTr("Set Shortcut")
    Accessible.name: text
    Accessible.description: qsTr("Shortcut of %1").arg(arrows)
    onClicked: recording ? Capture.stop() : Capture.start(gesture)
    // A page that is left, or a row that goes, takes its capture with it.
    onVisibleChanged: if (!visible && recording) Capture.stop()
    Component.onDestruction: if (recording) Capture.stop()

    T.ToolTip {
        id: hint
        x: (parent.width - implicitWidth) / 2
        y: parent.height + 4
        margins: 8
        padding: 6
        leftPadding: 10
        rightPadding: 10
        implicitWidth: Math.min(contentItem.implicitWidth + 20, 260)
        implicitHeight: contentItem.implicitHeight + 12
        visible: control.recording && Capture.refused
        closePolicy: T.Popup.NoAutoClose
        contentItem: Label {
            text: qsTr("This key cannot be used in a shortcut. Type another one.")
            font.pixelSize: Theme.caption
            Accessible.role: Accessible.AlertMessage
        }
        background: PopupFace { radius: 6 }
    }
}
