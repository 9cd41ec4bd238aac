import QtQuick
import QtQuick.Templates as T
import Tarvik.Model
import Tarvik.Preferences

Item {
    id: tab

    // The identifier of the selected row; empty for none.
    property string selection

    Label {
        id: explanation
        x: 18
        y: 12
        width: parent.width - 36
        text: qsTr("Gestures are disabled while these apps are frontmost (useful for games or design tools that need right-drag).")
        font.pixelSize: Theme.callout
        color: Theme.secondaryText
    }
    BorderedList {
        id: list
        x: 16
        y: explanation.y + explanation.height + 10
        width: parent.width - 32
        height: buttons.y - 10 - y
        name: qsTr("Excluded Apps")
        model: ExcludedApps
        view.activeFocusOnTab: true
        view.keyNavigationEnabled: true
        view.onActiveFocusChanged: if (view.activeFocus && tab.selection === "" && view.count > 0) view.currentItem.select()
        view.onCurrentItemChanged: if (view.activeFocus && view.currentItem) view.currentItem.select()
        delegate: T.ItemDelegate {
            id: row

            required property int index
            required property string appId
            required property string name
            required property bool installed
            readonly property bool selected: tab.selection === appId

            function select() {
                tab.selection = appId
                ListView.view.currentIndex = index
            }

            width: ListView.view.width
            height: 34
            focusPolicy: Qt.NoFocus
            Accessible.name: name
            Accessible.description: appId
            Accessible.role: Accessible.ListItem
            Accessible.selectable: true
            Accessible.selected: selected
            onClicked: {
                ListView.view.forceActiveFocus(Qt.MouseFocusReason)
                select()
            }
            background: Item { RowGround { row: row.index; marked: row.selected } }
            contentItem: Item {
                AppLabel {
                    x: 16
                    width: parent.width - 32
                    anchors.verticalCenter: parent.verticalCenter
                    appId: row.appId
                    name: row.name
                    installed: row.installed
                }
            }
        }
        FocusRing { shown: list.view.activeFocus && tab.byKeyboard; around: list.radius }
    }
    property bool byKeyboard: false
    Connections {
        target: list.view
        function onActiveFocusChanged() { tab.byKeyboard = list.view.focusReason === Qt.TabFocusReason || list.view.focusReason === Qt.BacktabFocusReason }
    }
    Row {
        id: buttons
        x: 16
        y: parent.height - height - 16
        spacing: 8

        MenuButton {
            text: qsTr("Add Running App")
            symbol: "plus"
            entries: () => ExcludedApps.running()
            emptyText: qsTr("No other applications are running")
            onChosen: (entry) => ExcludedApps.add(entry.appId)
        }
        PushButton {
            text: qsTr("Remove")
            enabled: tab.selection !== ""
            onClicked: {
                ExcludedApps.remove(tab.selection)
                tab.selection = ""
            }
        }
    }
}
