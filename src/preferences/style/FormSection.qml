import QtQuick
import Tarvik.Preferences

// A card of rows, with a header above it and a footer below it where there is something to say.
Column {
    id: section

    default property alias rows: rows.data
    property string header
    property string footer

    width: parent.width
    spacing: 5

    Label {
        x: 12
        width: parent.width - 24
        visible: section.header.length > 0
        text: section.header
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Rectangle {
        width: parent.width
        height: rows.height
        radius: Theme.cardRadius
        color: Theme.card
        border.width: 1
        border.color: Theme.cardBorder
        Column {
            id: rows
            width: parent.width
        }
    }
    Caption {
        x: 12
        width: parent.width - 24
        visible: section.footer.length > 0
        text: section.footer
    }
}
