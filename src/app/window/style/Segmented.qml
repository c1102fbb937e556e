pragma ComponentBehavior: Bound

import QtQuick
import Orvalen

/// One choice of a few, side by side, in several rows if the width is too small.
Item {
    id: picker

    required property list<string> labels
    required property int currentIndex
    property string name
    property int textSize: Theme.body
    signal chosen(int index)

    readonly property int count: labels.length
    readonly property int gap: 3
    readonly property real widest: Math.max(0, ...segmentWidths)
    readonly property real needed: segmentWidths.reduce((sum, w) => sum + w, 0) + gap * 2
    readonly property int columns: width <= 0 || needed <= width ? count
        : (widest * Math.ceil(count / 2) + gap * 2 <= width ? Math.ceil(count / 2)
        : Math.max(1, Math.min(Math.ceil(count / 2), Math.floor((width - gap * 2) / Math.max(1, widest)))))
    readonly property real rowHeight: Theme.high(textSize < Theme.body ? 26 : 28)
    property var segmentWidths: []

    implicitWidth: needed
    implicitHeight: Math.ceil(count / columns) * rowHeight + gap * 2
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    function measure() {
        const widths = []
        for (let i = 0; i < segments.count; ++i)
            widths.push((segments.itemAt(i) as Pressable)?.implicitWidth ?? 0)
        segmentWidths = widths
    }

    /// Returns the area of a segment. In a single row, each segment gets its own width and an equal share of the extra
    /// width. In several rows, all segments are equally wide.
    function place(index: int): rect {
        const room = width - gap * 2
        const row = Math.floor(index / columns)
        if (columns < count) {
            const each = room / columns
            return Qt.rect(gap + (index % columns) * each, gap + row * rowHeight, each, rowHeight)
        }
        const spare = Math.max(0, room - (needed - gap * 2)) / Math.max(1, count)
        let x = gap
        for (let i = 0; i < index; ++i)
            x += (segmentWidths[i] ?? 0) + spare
        return Qt.rect(x, gap, (segmentWidths[index] ?? 0) + spare, rowHeight)
    }

    function move(by: int) {
        const next = currentIndex + by
        if (next < 0 || next >= count)
            return
        chosen(next)
        segments.itemAt(next).forceActiveFocus(Qt.TabFocusReason)
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius + 2
        color: Theme.track
    }

    Repeater {
        id: segments

        model: picker.labels
        onCountChanged: picker.measure()

        Pressable {
            id: segment

            required property int index
            required property string modelData
            readonly property bool current: index === picker.currentIndex
            readonly property rect box: picker.place(index)

            text: modelData
            x: box.x
            y: box.y
            width: box.width
            height: box.height
            implicitWidth: Math.ceil(caption.implicitWidth) + 18
            spokenRole: Accessible.RadioButton
            ticked: current
            // One tab stop, at the current segment. Arrow keys move between segments.
            focusPolicy: current || (picker.currentIndex < 0 && index === 0) ? Qt.StrongFocus : Qt.ClickFocus
            onImplicitWidthChanged: picker.measure()
            onClicked: picker.chosen(index)

            Keys.onLeftPressed: picker.move(-1)
            Keys.onUpPressed: picker.move(-1)
            Keys.onRightPressed: picker.move(1)
            Keys.onDownPressed: picker.move(1)

            Label {
                id: caption

                anchors.fill: parent
                anchors.leftMargin: 4
                anchors.rightMargin: 4
                z: 1
                text: segment.text
                font.pixelSize: picker.textSize
                font.weight: segment.current ? Font.DemiBold : Font.Medium
                color: segment.current ? Theme.text : Theme.secondary
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            background: Rectangle {
                radius: Theme.radius
                color: segment.current ? Theme.control : segment.stateTint
                border.width: segment.current ? 1 : 0
                border.color: Theme.controlLine

                FocusRing {
                    anchors.margins: -1
                    inner: Theme.radius - 2
                    shown: segment.visualFocus
                }
            }
        }
    }
}
