import QtQuick

// Scrolls the flickable that it stands in by the wheel alone: dragging a page by its ground is for fingers.
WheelHandler {
    readonly property real notch: 48
    required property Flickable view

    target: null
    acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
    onWheel: (event) => {
        const by = event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 120 * notch
        const first = view.originY - view.topMargin
        const last = Math.max(first, view.originY + view.contentHeight + view.bottomMargin - view.height)
        view.contentY = Math.min(last, Math.max(first, view.contentY - by))
    }
}
