pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvalen

/// The list of rows. If the focused row scrolls out of sight, the list itself takes the focus and returns it when the
/// row is visible again. A key therefore never acts on a row that the user does not see, or on the row that reuses its
/// item.
ListView {
    id: list

    required property ReviewState review
    required property PickerList pickerList
    required property SearchState search
    required property SearchList searchList

    /// Asks to move the focus to the control after or before the list.
    signal passed(bool forwards)

    property int heldRow: -1 ///< the row that had the focus when it went out of sight; -1 while a row has the focus
    property int heldControl: 0
    property MatchedTrackRow focusedRow: null
    property int lastRow: -1 ///< the row that had the focus last
    property bool returning: false

    implicitHeight: 190
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    cacheBuffer: 400
    reuseItems: true
    currentIndex: -1
    keyNavigationEnabled: false
    model: review.rows
    T.ScrollBar.vertical: ThinScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: spokenListName
    readonly property string spokenListName: "Results" // read by RowsAccessible

    function firstInSight(): int {
        return Math.max(0, indexAt(1, contentY + 1))
    }

    function lastInSight(): int {
        const index = indexAt(1, contentY + height - 2)
        return index < 0 ? count - 1 : index
    }

    /// Moves the focus to a control of the row. If there is no such row, moves it to the control before or after the
    /// list. Qt's focus chain does not work for rows, because items exist only for visible rows and are not in order.
    function reachRow(index: int, control: int) {
        if (index < 0 || index >= count) {
            passed(index >= count)
        } else {
            positionViewAtIndex(index, ListView.Contain)
            const row = itemAtIndex(index) as MatchedTrackRow
            row?.reach(control)
        }
    }

    /// Returns the row that has the focus, or would get it.
    function currentRow(): int {
        const focused = focusedRow && focusedRow.focusedControl() >= 0 ? focusedRow.index : heldRow
        return focused < 0 ? firstInSight() : focused
    }

    function hasKeysItself(): bool {
        return Window.activeFocusItem === list
    }

    function isInSight(control: Item): bool {
        const top = control.mapToItem(list, 0, 0).y
        return top + control.height > 0 && top < height
    }

    /// Takes the focus from the row.
    function hold(row: MatchedTrackRow, control: int) {
        heldRow = row.index
        heldControl = control
        focusedRow = null
        row.controls[control].focus = false
        forceActiveFocus(Qt.OtherFocusReason)
    }

    function followFocus() {
        const control = focusedRow?.focusedControl() ?? -1
        if (control >= 0 && !isInSight(focusedRow.controls[control]))
            hold(focusedRow, control)
        else if (heldRow >= 0)
            Qt.callLater(giveBack) // rows are created after the view has moved
    }

    function giveBack() {
        const row = heldRow < 0 || !hasKeysItself() ? null : itemAtIndex(heldRow) as MatchedTrackRow
        if (!row || !isInSight(row.controls[heldControl]))
            return
        returning = true
        row.reach(heldControl)
        returning = false
    }

    /// While the list itself has the focus, the first key moves the focus to a row; only the next key acts there.
    function bringBack(key: int): bool {
        const leads = key === Qt.Key_Up || key === Qt.Key_Down || key === Qt.Key_Tab || key === Qt.Key_Space
            || key === Qt.Key_Return || key === Qt.Key_Enter
        if (key === Qt.Key_Backtab && heldRow < 0)
            passed(false)
        else if (leads || key === Qt.Key_Backtab)
            reachRow(heldRow < 0 ? firstInSight() : heldRow, heldRow < 0 ? MatchedTrackRow.First : heldControl)
        else
            return false
        return true
    }

    FocusRing {
        parent: list
        anchors.margins: 0
        shown: list.Window.activeFocusItem === list
    }

    onContentYChanged: followFocus()
    onHeightChanged: followFocus()

    Connections {
        target: list.model
        function onModelReset() {
            list.heldRow = -1
            list.lastRow = -1
            list.focusedRow = null
        }
    }

    Keys.onPressed: event => {
        const control = heldRow < 0 && focusedRow ? focusedRow.focusedControl() : heldControl
        const from = currentRow()
        const page = Math.max(1, lastInSight() - firstInSight())
        event.accepted = true
        switch (event.key) {
        case Qt.Key_PageUp:
            return reachRow(Math.max(0, from - page), control)
        case Qt.Key_PageDown:
            return reachRow(Math.min(count - 1, from + page), control)
        case Qt.Key_Home:
            return reachRow(0, control)
        case Qt.Key_End:
            return reachRow(count - 1, control)
        }
        if (hasKeysItself() && bringBack(event.key))
            return
        // Other letters jump to a row. N and P have their own functions.
        const jumps = event.text > " " && event.key !== Qt.Key_N && event.key !== Qt.Key_P
            && event.key !== Qt.Key_Delete && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier))
        const found = jumps ? review.findInitial(event.text, from + 1) : -1
        if (found >= 0)
            reachRow(found, control)
        event.accepted = jumps
    }

    delegate: MatchedTrackRow {
        id: row

        width: list.width - 12
        ListView.onPooled: {
            const control = focusedControl()
            if (control >= 0)
                list.hold(row, control)
        }
        onFocused: control => {
            list.focusedRow = row
            list.lastRow = index
            list.heldRow = -1
            // A press must not move the pressed control away from the pointer.
            if (!list.returning && (control as T.Control)?.focusReason !== Qt.MouseFocusReason)
                list.positionViewAtIndex(index, ListView.Contain)
        }
        onLeaving: (by, control) => list.reachRow(index + by, control)
        onPreviewToggled: list.review.togglePreview(index)
        onBrowsed: list.review.browse(index)
        onFindOpened: control => list.searchList.openAt(control, index)
        suggestions: {
            void list.search.suggestionCount
            return hasTrack ? [] : list.search.suggestionsOf(index)
        }
        onSuggestionTaken: suggestion => list.search.take(index, suggestion)
        onSuggestionPreviewed: suggestion => list.search.previewSuggestion(index, suggestion)
        takes: urls => list.review.canTake(urls)
        onDropped: urls => list.review.attach(index, urls)
        onTicked: on => list.review.include(index, on)
        onChosen: option => list.review.choose(index, option)
        onOptionPreviewed: option => list.review.previewOption(index, option)
        onPickerOpened: picker => list.pickerList.openAt(picker, list.review.optionPaths(index))
    }
}
