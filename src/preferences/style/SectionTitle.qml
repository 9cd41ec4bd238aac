import QtQuick
import Tarvik.Preferences

// Over the entries of a section; the section without a name shows nothing.
Item {
    required property string section

    width: ListView.view ? ListView.view.width : 0
    height: section ? 28 : 0
    visible: section.length > 0

    Rectangle {
        x: 8
        y: 4
        width: parent.width - 16
        height: 1
        color: Theme.hairline
    }
    Label {
        x: 8
        width: parent.width - 16
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 3
        text: parent.section
        font.pixelSize: Theme.caption
        font.weight: Font.DemiBold
        color: Theme.secondaryText
        elide: Text.ElideRight
        wrapMode: Text.NoWrap
        Accessible.role: Accessible.Heading
    }
}
