import QtQuick
import QtQuick.Layouts
import Orvalen

/// Offers to use the choices of earlier runs, and to load the rows that the current ones replaced.
ColumnLayout {
    id: notices

    required property ReviewState review

    visible: review.earlierText !== "" || review.previousIsKept
    spacing: 4

    component Notice: RowLayout {
        id: notice

        property alias text: caption.text
        property alias action: button.text
        signal accepted()

        spacing: 8

        Caption {
            id: caption

        }
        PushButton {
            id: button

            textSize: Theme.caption
            onClicked: notice.accepted()
        }
    }

    Notice {
        visible: notices.review.earlierText !== ""
        text: notices.review.earlierText
        action: "Use them"
        onAccepted: notices.review.useEarlierChoices()
    }
    Notice {
        visible: notices.review.previousIsKept
        text: "The rows that you reviewed before were kept"
        action: "Load them"
        onAccepted: notices.review.loadPrevious()
    }
}
