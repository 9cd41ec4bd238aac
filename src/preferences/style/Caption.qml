import QtQuick
import Tarvik.Preferences

Label {
    font.pixelSize: Theme.caption
    color: Theme.secondaryText
    lineHeight: 1.1
}
