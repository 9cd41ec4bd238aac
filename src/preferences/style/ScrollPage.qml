import QtQuick
import QtQuick.Templates as T
import Tarvik.Preferences

// A page whose content may be taller than the window. What gets the keyboard focus scrolls into view.
Flickable {
    id: page

    default property alias content: column.data
    property alias spacing: column.spacing

    contentWidth: width
    contentHeight: column.height
    topMargin: 12
    bottomMargin: 12
    interactive: false
    clip: true
    T.ScrollBar.vertical: ThinScrollBar { x: page.width - width - 1 }
    WheelScroll { view: page }
    FollowFocus { view: page }

    Column {
        id: column
        x: 16
        width: page.width - 32
        spacing: 12
    }
}
