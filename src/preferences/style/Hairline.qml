import QtQuick
import Tarvik.Preferences

// Between a row of a form and the one above it; the first row has none.
Rectangle {
    x: 12
    width: parent.width - 24
    height: 1
    color: Theme.hairline
    visible: parent.y > 0
}
