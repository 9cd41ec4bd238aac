import QtQuick
import Tarvik.Model
import Tarvik.Preferences

ScrollPage {
    FormSection {
        Item {
            width: parent.width
            height: 104

            ProgramIcon {
                x: 16
                y: 16
                width: 72
                height: 72
                Accessible.role: Accessible.Graphic
                Accessible.name: qsTr("Tarvik")
            }
            Column {
                x: 104
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - x - 16
                spacing: 3

                Label {
                    text: qsTr("Tarvik")
                    font.pixelSize: Theme.title2
                    font.bold: true
                    Accessible.role: Accessible.Heading
                }
                Label {
                    width: parent.width
                    text: Texts.subtitle
                    color: Theme.secondaryText
                }
                Label {
                    text: Texts.version
                    color: Theme.secondaryText
                }
            }
        }
    }
    FormSection {
        header: qsTr("Updates")
        footer: Updater.outcome
        SwitchRow {
            text: qsTr("Automatically check for updates")
            checked: Updater.automatic
            onToggled: Updater.automatic = checked
        }
        FormRow {
            label: qsTr("Last checked")
            Label {
                text: Updater.lastChecked
                color: Theme.secondaryText
            }
        }
        FormRow {
            PushButton {
                text: qsTr("Check for Updates…")
                onClicked: Updater.check()
            }
        }
    }
}
