import QtQuick
import QtQuick.Templates as T
import Tarvik.Preferences

// A button that opens a menu. `entries` is asked for each time it opens: objects with "title" and whatever else the
// handler of `chosen` needs; `emptyText` stands for an empty list.
PushButton {
    id: control

    property var entries: () => []
    property string emptyText

    signal chosen(var entry)

    Accessible.role: Accessible.ButtonMenu
    onClicked: menu.visible ? menu.close() : open()
    Keys.onDownPressed: open()

    function open() {
        const all = entries()
        items.model = all.length ? all : [{ title: emptyText, none: true }]
        menu.above = control.Window.height - control.mapToItem(null, 0, control.height).y < 340
        menu.open()
        menu.currentIndex = 0
    }

    T.Menu {
        id: menu
        property bool above: false
        y: above ? -height - 4 : control.height + 4
        margins: 8
        padding: 4
        implicitWidth: Math.max(180, contentItem.widest + 8)
        implicitHeight: Math.min(contentItem.contentHeight + 8, 320)
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

        contentItem: ListView {
            id: list
            property real widest: 0
            implicitHeight: contentHeight
            clip: true
            interactive: false
            model: menu.contentModel
            currentIndex: menu.currentIndex
            highlightMoveDuration: 0
            T.ScrollBar.vertical: ThinScrollBar {}
            WheelScroll { view: list }
        }
        background: PopupFace {}

        Instantiator {
            id: items
            model: []
            delegate: T.MenuItem {
                id: item
                required property var modelData
                text: modelData.title
                enabled: !modelData.none
                width: menu.availableWidth
                implicitHeight: 26
                implicitWidth: Math.min(label.implicitWidth + 24, 400)
                leftPadding: 12
                rightPadding: 12
                hoverEnabled: true
                Accessible.name: text
                onTriggered: control.chosen(modelData)
                contentItem: Text {
                    id: label
                    text: item.text
                    font.pixelSize: Theme.body
                    color: !item.enabled ? Theme.secondaryText : item.highlighted ? Theme.highlightText : Theme.text
                    elide: Text.ElideRight
                    verticalAlignment: Text.AlignVCenter
                }
                background: Rectangle {
                    radius: 5
                    color: item.highlighted && item.enabled ? Theme.highlight : "transparent"
                }
            }
            onObjectAdded: (index, object) => {
                menu.insertItem(index, object)
                list.widest = Math.max(list.widest, object.implicitWidth)
            }
            onObjectRemoved: (index, object) => {
                menu.removeItem(object)
                list.widest = 0
            }
        }
    }
}
