import QtQuick
import Tarvik.Model
import Tarvik.Preferences

Item {
    id: tab

    PermissionBanner {
        id: banner
        x: 16
        y: 12
        width: parent.width - 32
    }
    Text {
        id: explanation
        readonly property string button: Settings.triggerButton === 1 ? qsTr("middle") : qsTr("right")
        x: 18
        y: banner.visible ? banner.y + banner.height + 12 : 12
        width: parent.width - 36
        text: qsTr("Hold the %1 mouse button, draw a stroke, then release. A plain click still works normally.")
            .arg("<b>" + button + "</b>")
        textFormat: Text.StyledText
        font.pixelSize: Theme.callout
        color: Theme.secondaryText
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text.replace(/<[^>]*>/g, "")
    }
    BorderedList {
        id: list
        x: 16
        y: explanation.y + explanation.height + 10
        width: parent.width - 32
        height: buttons.y - 12 - y
        name: qsTr("Gestures")
        model: Gestures
        delegate: GestureRow {}
    }
    Row {
        id: buttons
        x: 16
        y: parent.height - height - 16
        spacing: 8

        PushButton {
            text: Recording.active ? qsTr("Draw a gesture now…") : qsTr("Record New Gesture")
            symbol: "record.circle"
            symbolColor: Theme.recording
            enabled: !Recording.active && Permissions.trusted
            onClicked: Recording.start()
        }
        PushButton {
            visible: Recording.active
            text: qsTr("Cancel")
            onClicked: Recording.cancel()
        }
    }
    PushButton {
        anchors.right: parent.right
        anchors.rightMargin: 16
        y: buttons.y
        text: qsTr("Reset to Defaults")
        onClicked: Gestures.resetToDefaults()
    }
    NumberAnimation {
        id: scrolling
        target: list.view
        property: "contentY"
        duration: Theme.moving
        easing.type: Easing.OutQuad
    }
    Connections {
        target: Recording
        function onRecorded() {
            const view = list.view
            const before = view.contentY
            view.positionViewAtIndex(Gestures.rowOf(Recording.highlighted), ListView.Contain)
            scrolling.from = before
            scrolling.to = view.contentY
            scrolling.restart()
        }
    }
}
