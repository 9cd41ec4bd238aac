import QtQuick
import QtQuick.Templates as T
import Tarvik.Model
import Tarvik.Preferences

// The window's content: a row of tabs and the chosen one's page.
Rectangle {
    id: root

    readonly property var tabs: [
        { title: qsTr("Gestures"), symbol: "hand.draw", page: "GesturesTab.qml" },
        { title: qsTr("General"), symbol: "gearshape", page: "GeneralTab.qml" },
        { title: qsTr("Excluded Apps"), symbol: "nosign", page: "ExcludedAppsTab.qml" },
        { title: qsTr("Help"), symbol: "questionmark.circle", page: "HelpTab.qml" },
        { title: qsTr("About"), symbol: "info.circle", page: "AboutTab.qml" }
    ]
    property int current: 0

    function choose(index, reason) {
        current = (index + tabs.length) % tabs.length
        buttons.itemAt(current).forceActiveFocus(reason)
    }

    width: 620
    height: 520
    color: Theme.window

    Shortcut { sequences: ["Ctrl+W", "Ctrl+Q"]; onActivated: root.Window.window.close() }
    Shortcut { sequences: ["Ctrl+Tab", "Ctrl+PgDown"]; onActivated: root.choose(root.current + 1, Qt.TabFocusReason) }
    Shortcut { sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]; onActivated: root.choose(root.current - 1, Qt.TabFocusReason) }

    Row {
        id: bar
        anchors.horizontalCenter: parent.horizontalCenter
        y: 8
        spacing: 4
        Accessible.role: Accessible.PageTabList
        Accessible.name: qsTr("Tabs")
        Keys.onLeftPressed: root.choose(root.current - 1, Qt.TabFocusReason)
        Keys.onRightPressed: root.choose(root.current + 1, Qt.TabFocusReason)

        Repeater {
            id: buttons
            model: root.tabs
            SymbolTab {
                required property int index
                required property var modelData
                text: modelData.title
                symbol: modelData.symbol
                checked: root.current === index
                autoExclusive: true
                onClicked: root.current = index
            }
        }
    }
    Rectangle {
        y: bar.y + bar.height + 8
        width: parent.width
        height: 1
        color: Theme.hairline
    }
    Banner {
        id: storage
        x: 16
        y: bar.y + bar.height + 20
        width: parent.width - 32
        visible: Settings.storageProblem !== ""
        title: qsTr("Your changes cannot be saved")
        explanation: qsTr("%1. They hold until Tarvik ends; the next change tries again.").arg(Settings.storageProblem)
    }
    Repeater {
        model: root.tabs
        Loader {
            required property int index
            required property var modelData
            readonly property bool chosen: root.current === index
            y: bar.y + bar.height + 9 + (storage.visible ? storage.height + 11 : 0)
            width: root.width
            height: root.height - y
            visible: chosen
            onChosenChanged: if (chosen) source = modelData.page
            Component.onCompleted: if (chosen) source = modelData.page
        }
    }
}
