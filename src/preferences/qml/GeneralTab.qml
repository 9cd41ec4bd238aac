import QtQuick
import Tarvik.Model
import Tarvik.Preferences

ScrollPage {
    PermissionBanner {}
    FormSection {
        SwitchRow {
            text: qsTr("Enable mouse gestures")
            checked: Settings.enabled
            onToggled: Settings.enabled = checked
        }
        SwitchRow {
            text: qsTr("Launch Tarvik at login")
            checked: Settings.launchAtLogin
            onToggled: Settings.launchAtLogin = checked
        }
    }
    FormSection {
        header: qsTr("Gesture")
        FormRow {
            label: qsTr("Gesture button")
            PopUpButton {
                Accessible.name: qsTr("Gesture button")
                model: [qsTr("Right button"), qsTr("Middle button (wheel click)")]
                currentIndex: Settings.triggerButton
                onActivated: (index) => Settings.triggerButton = index
            }
        }
        SwitchRow {
            text: qsTr("Show gesture trail and action name")
            checked: Settings.showTrail
            onToggled: Settings.showTrail = checked
        }
        FormRow {
            label: qsTr("Stroke sensitivity")
            Row {
                width: 260
                spacing: 8
                Caption {
                    id: high
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("High")
                }
                // The shortest movement that makes a stroke: the shorter it is, the more sensitive.
                PlainSlider {
                    width: parent.width - high.width - low.width - 16
                    Accessible.name: qsTr("Stroke sensitivity")
                    from: 15
                    to: 90
                    value: Settings.minStroke
                    onMoved: Settings.minStroke = value
                }
                Caption {
                    id: low
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Low")
                }
            }
        }
    }
    FormSection {
        header: qsTr("Mouse Scrolling")
        footer: Texts.scrollingFooter
        SwitchRow {
            text: qsTr("Reverse vertical scrolling")
            checked: Settings.reverseVertical
            onToggled: Settings.reverseVertical = checked
        }
        SwitchRow {
            text: qsTr("Reverse horizontal scrolling")
            checked: Settings.reverseHorizontal
            onToggled: Settings.reverseHorizontal = checked
        }
    }
    FormSection {
        footer: qsTr("While holding the gesture button, rolling the wheel up/down triggers previous/next.")
        FormRow {
            label: qsTr("Hold button + scroll wheel")
            PopUpButton {
                Accessible.name: qsTr("Hold button + scroll wheel")
                model: [qsTr("Switch tabs"), Texts.switchDesktops, qsTr("Switch windows of app"), qsTr("Nothing")]
                currentIndex: Settings.scrollBinding
                onActivated: (index) => Settings.scrollBinding = index
            }
        }
    }
    FormSection {
        footer: qsTr("Held still for that long, the gesture button is the application's, and drags there.")
        FormRow {
            label: qsTr("Hold still to drag")
            Row {
                width: 260
                spacing: 8
                // Its left end, one step before the shortest time, is off.
                PlainSlider {
                    width: parent.width - delay.width - 8
                    Accessible.name: qsTr("Hold still to drag")
                    Accessible.description: delay.text
                    from: 150
                    to: 1000
                    unit: 50
                    value: Settings.dragDelay > 0 ? Settings.dragDelay : from
                    onMoved: {
                        const time = Math.round(value / unit) * unit
                        Settings.dragDelay = time > from ? time : 0
                    }
                }
                Caption {
                    id: delay
                    anchors.verticalCenter: parent.verticalCenter
                    width: 52
                    horizontalAlignment: Text.AlignRight
                    text: Settings.dragDelay > 0 ? qsTr("%1 ms").arg(Settings.dragDelay) : qsTr("Off")
                }
            }
        }
    }
}
