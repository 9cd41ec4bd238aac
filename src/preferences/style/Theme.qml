pragma Singleton

import QtQuick
import Tarvik.Model

// Every colour, size and duration of the window. Sizes are points.
QtObject {
    readonly property bool dark: Desktop.dark

    readonly property color window: dark ? "#232326" : "#f3f3f5"
    readonly property color card: dark ? "#2e2e32" : "#ffffff"
    readonly property color cardBorder: dark ? "#1fffffff" : "#1c000000"
    readonly property color hairline: dark ? "#17ffffff" : "#14000000"
    readonly property color text: dark ? "#f2f2f4" : "#1d1d1f"
    readonly property color secondaryText: dark ? "#a9a9b0" : "#636368"
    readonly property color alternateRow: dark ? "#37373c" : "#f5f5f7"
    readonly property color control: dark ? "#47474d" : "#ffffff"
    readonly property color controlHovered: dark ? "#505057" : "#f7f7f9"
    readonly property color controlPressed: dark ? "#3c3c42" : "#e8e8eb"
    readonly property color controlBorder: dark ? "#24ffffff" : "#2b000000"
    readonly property color track: dark ? "#5a5a61" : "#d8d8dd"
    readonly property color knob: "#ffffff"
    readonly property color popup: dark ? "#3a3a3f" : "#ffffff"
    readonly property color tint: dark ? "#14ffffff" : "#0d000000"
    readonly property color warning: "#f08c00"
    readonly property color recording: dark ? "#ff6961" : "#d70015"

    readonly property color accent: Desktop.accent
    // The same hue where it is read or where it carries meaning as a thin line.
    readonly property color accentText: Desktop.readableOn(accent, card)
    readonly property color accentTint: Qt.rgba(accent.r, accent.g, accent.b, dark ? 0.28 : 0.14)
    // The ground of what is highlighted, and what is written on it.
    readonly property color highlight: Desktop.readableOn(accent, highlightText)
    readonly property color highlightText: "#ffffff"

    readonly property int body: 13
    readonly property int callout: 12
    readonly property int caption: 11
    readonly property int title3: 15
    readonly property int title2: 17
    readonly property int arrows: 17

    readonly property int row: 36
    readonly property int controlHeight: 26
    readonly property int cardRadius: 10
    readonly property int controlRadius: 6

    readonly property int moving: Desktop.reducedMotion ? 0 : 150
}
