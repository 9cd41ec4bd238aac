import QtQuick
import QtQuick.Templates as T
import Tarvik.Preferences

// A list in a card. Rows draw their own ground with RowGround.
Rectangle {
    id: card

    property alias model: list.model
    property alias delegate: list.delegate
    property alias view: list
    property string name

    radius: Theme.cardRadius
    color: Theme.card
    border.width: 1
    border.color: Theme.cardBorder

    ListView {
        id: list
        anchors.fill: parent
        anchors.margins: 1
        topMargin: 5
        bottomMargin: 5
        clip: true
        interactive: false
        // All rows exist, so that the keyboard reaches them all.
        cacheBuffer: 100000
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: Theme.moving
        highlightMoveVelocity: -1
        T.ScrollBar.vertical: ThinScrollBar { x: list.width - width - 1 }
        WheelScroll { view: list }
        FollowFocus { view: list }
        Accessible.role: Accessible.List
        Accessible.name: card.name
    }
}
