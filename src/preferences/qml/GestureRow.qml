import QtQuick
import Tarvik.Model
import Tarvik.Preferences

// One gesture: its arrows, its action, its shortcut where it has one of its own.
Item {
    id: row

    required property int index
    required property string gesture
    required property string arrows
    required property int kind
    required property bool hasShortcut
    required property string shortcut
    readonly property bool highlighted: Recording.highlighted === gesture && gesture.length > 0

    width: ListView.view.width
    height: 38
    Accessible.role: Accessible.ListItem
    Accessible.name: arrows

    RowGround { row: row.index; marked: row.highlighted }
    Text {
        id: strokes
        x: 16
        width: 130
        anchors.verticalCenter: parent.verticalCenter
        text: row.arrows
        font.family: Desktop.monospaced
        font.pixelSize: Theme.arrows
        font.weight: Font.DemiBold
        color: row.highlighted ? Theme.accentText : Theme.text
        elide: Text.ElideRight
    }
    ActionPicker {
        id: picker
        x: strokes.x + strokes.width + 8
        anchors.verticalCenter: parent.verticalCenter
        gesture: row.gesture
        arrows: row.arrows
        kind: row.kind
    }
    ShortcutRecorder {
        x: picker.x + picker.width + 8
        width: Math.min(implicitWidth, trash.x - 8 - x)
        anchors.verticalCenter: parent.verticalCenter
        visible: row.kind === Actions.custom()
        gesture: row.gesture
        arrows: row.arrows
        shortcut: row.shortcut
    }
    IconButton {
        id: trash
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        symbol: "trash"
        text: qsTr("Remove this gesture")
        Accessible.name: qsTr("Remove %1").arg(row.arrows)
        onClicked: Gestures.remove(row.gesture)
    }
}
