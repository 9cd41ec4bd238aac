import Tarvik.Model
import Tarvik.Preferences

// What is missing for gestures to work; gone as soon as it is there.
Banner {
    visible: !Permissions.trusted
    title: Texts.permissionTitle
    explanation: Texts.permissionExplanation

    PushButton {
        text: Texts.permissionButton
        onClicked: Permissions.grant()
    }
}
