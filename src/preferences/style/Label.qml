import QtQuick
import Tarvik.Preferences

Text {
    font.pixelSize: Theme.body
    color: Theme.text
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text.length === 0
}
