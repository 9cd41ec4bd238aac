import QtQuick
import Tarvik.Model
import Tarvik.Preferences

ScrollPage {
    spacing: 14

    component Heading: Label {
        width: parent.width
        font.pixelSize: Theme.title3
        font.bold: true
        Accessible.role: Accessible.Heading
    }
    component Paragraph: Label {
        width: parent.width
        lineHeight: 1.15
    }
    component Strokes: Label {
        font.family: Desktop.monospaced
        wrapMode: Text.NoWrap
    }

    Heading { text: qsTr("How to use") }
    Paragraph {
        text: qsTr("Hold the gesture button (right button by default), move the mouse in one or more straight strokes, and release. The trail and the matched action appear while you draw. Clicking without moving opens the normal context menu.")
    }
    Heading { text: qsTr("Default gestures") }
    Grid {
        columns: 2
        columnSpacing: 18
        rowSpacing: 4
        verticalItemAlignment: Grid.AlignVCenter

        Repeater {
            model: 2 * Texts.defaultGestures.length
            delegate: Strokes {
                required property int index
                readonly property var row: Texts.defaultGestures[index >> 1]
                text: index % 2 === 0 ? row.arrows : row.title
                font.family: index % 2 === 0 ? Desktop.monospaced : Qt.application.font.family
            }
        }
        Strokes { text: qsTr("hold + wheel") }
        Label { text: qsTr("Previous / next tab") }
    }
    Heading { text: qsTr("Switching desktops") }
    Paragraph { text: Texts.switchingDesktops }
    Heading { text: qsTr("Tabs") }
    Paragraph { text: Texts.tabs }
}
