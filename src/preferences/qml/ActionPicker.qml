import QtQuick
import Tarvik.Model
import Tarvik.Preferences

// What a gesture does, chosen from the sections of actions.
PopUpButton {
    required property string gesture
    required property string arrows
    required property int kind

    implicitWidth: 204
    Accessible.name: qsTr("Action of %1").arg(arrows)
    sections: true
    textRole: "title"
    model: Actions
    currentIndex: kind
    onActivated: (index) => Gestures.setKind(gesture, index)
}
