import QtQuick

// Keeps the item that has the keyboard focus visible in the flickable that it stands in.
Item {
    id: follow

    required property Flickable view
    readonly property Item focused: view.Window.activeFocusItem

    onFocusedChanged: {
        for (let item = focused; item; item = item.parent) {
            if (item === view.contentItem) {
                const margin = 8
                const top = focused.mapToItem(view.contentItem, 0, 0).y - margin
                const bottom = top + focused.height + 2 * margin
                if (top < view.contentY)
                    view.contentY = Math.max(view.originY - view.topMargin, top)
                else if (bottom > view.contentY + view.height)
                    view.contentY = bottom - view.height
                return
            }
        }
    }
}
