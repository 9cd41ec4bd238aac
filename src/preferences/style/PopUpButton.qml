import QtQuick
import QtQuick.Templates as T
import Tarvik.Model
import Tarvik.Preferences

// A button that shows the chosen entry and opens a list of all of them, in sections where the model has the role "section".
// Binds `currentIndex`; the handler of `activated` writes.
T.ComboBox {
    id: control

    property bool sections: false
    // The key that opened the list is still down; its release would close it again.
    property bool opening: false

    function openByKey(event) {
        opening = !popup.visible
        event.accepted = opening
        if (opening)
            popup.open()
    }

    implicitWidth: 220
    implicitHeight: Theme.controlHeight
    leftPadding: 10
    rightPadding: 26
    hoverEnabled: true
    Accessible.description: displayText
    Keys.onReturnPressed: (event) => openByKey(event)
    Keys.onEnterPressed: (event) => openByKey(event)
    Keys.onReleased: (event) => {
        if (opening && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)) {
            opening = false
            event.accepted = true
        }
    }

    contentItem: Text {
        text: control.displayText
        font.pixelSize: Theme.body
        color: Theme.text
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
    indicator: Symbol {
        x: control.width - width - 6
        anchors.verticalCenter: parent.verticalCenter
        width: 16
        height: 16
        name: "chevron.up.chevron.down"
        color: Theme.secondaryText
    }
    background: ControlBackground {
        hovered: control.hovered
        down: control.down
        focused: control.visualFocus
    }
    delegate: PopUpItem {
        required property int index
        width: ListView.view.width
        text: control.textAt(index)
        highlighted: control.highlightedIndex === index
        chosen: control.currentIndex === index
    }
    popup: T.Popup {
        id: popup

        function widest() {
            let width = 0
            for (let i = 0; i < control.count; ++i) {
                metrics.text = control.textAt(i)
                width = Math.max(width, metrics.advanceWidth)
            }
            return Math.ceil(width) + 28 + 12 + 8
        }

        margins: 8
        padding: 4
        width: Math.max(control.width, implicitWidth)
        implicitHeight: Math.min(list.contentHeight + 8, 320)
        onAboutToShow: {
            implicitWidth = widest()
            const above = control.mapToItem(null, 0, 0).y
            const below = control.Window.height - above - control.height
            y = height + 12 <= below || below >= above ? control.height + 4 : -height - 4
            list.positionViewAtIndex(control.currentIndex, ListView.Center)
        }

        contentItem: ListView {
            id: list
            implicitHeight: contentHeight
            clip: true
            interactive: false
            // All entries exist, for screen readers too.
            cacheBuffer: 100000
            model: control.delegateModel
            currentIndex: control.highlightedIndex
            highlightMoveDuration: 0
            section.property: control.sections ? "section" : ""
            section.delegate: SectionTitle {}
            T.ScrollBar.vertical: ThinScrollBar {}
            WheelScroll { view: list }
            Accessible.role: Accessible.List
            Accessible.name: control.Accessible.name
        }
        background: PopupFace {}
        TextMetrics { id: metrics; font.pixelSize: Theme.body }
    }
}
